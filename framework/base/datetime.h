#pragma once

#include <string>
#include <string_view>

#include "framework/api.h"

namespace framework {

/// Days since 30 December 1899, the time of day as the fraction. Zero means "no date". Moments
/// before are negative and count on evenly: -0.25 is six o'clock in the evening of the 29th.
/// Carries no time zone: whoever holds the value says whether it is local or UTC.
using TDateTime = double;

/// A day of the calendar: years 1 to 9999, months and days from 1.
struct DateParts {
    int Year, Month, Day;
    bool operator==(const DateParts&) const = default;
};

/// A time of day, from 0:00:00.000 to 23:59:59.999.
struct TimeParts {
    int Hour, Minute, Second, MilliSecond;
    bool operator==(const TimeParts&) const = default;
};

/// The day of a Gregorian date, years 1 to 9999; raises EConvertError when there is none.
FRAMEWORK_API TDateTime EncodeDate(int year, int month, int day);
/// As EncodeDate, but answers false instead of raising and leaves `value` alone then.
FRAMEWORK_API bool TryEncodeDate(int year, int month, int day, TDateTime& value);
/// The fraction of a day; raises EConvertError outside 0:00:00.000 to 23:59:59.999.
FRAMEWORK_API TDateTime EncodeTime(int hour, int minute, int second, int milliSecond);

/// The date and the time of a value, which is rounded to whole milliseconds first, so that both
/// always belong together (a moment just short of midnight counts to the next day in both). Raise
/// EConvertError outside the years 1 to 9999.
FRAMEWORK_API DateParts DecodeDate(TDateTime value);
FRAMEWORK_API TimeParts DecodeTime(TDateTime value);

/// 0 for Sunday to 6 for Saturday.
FRAMEWORK_API int DayOfWeek(TDateTime value);
/// Number of days of a month; raises EConvertError for a month outside 1 to 12.
FRAMEWORK_API int DaysInMonth(int year, int month);

/// The time of day as hours, minutes and seconds, "h:mm:ss" with 24 hours; the same whatever the
/// user's locale is.
FRAMEWORK_API std::string TimeToStr(TDateTime value);
/// Reads "h", "h:mm", "h:mm:ss" or "h:mm:ss.zzz", blanks around the numbers allowed; raises
/// EConvertError for anything else.
FRAMEWORK_API TDateTime StrToTime(std::string_view text);

}  // namespace framework
