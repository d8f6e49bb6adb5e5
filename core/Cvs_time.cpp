#include "core/Cvs_time.h"

#include <wininet.h>

#include <cmath>
#include <optional>

#include "framework/base/exceptions.h"
#include "framework/base/system_time.h"

namespace tandrel {

using framework::TDateTime;

namespace {

constexpr double MinutesPerDay = 24 * 60;
/// Instants that are no further apart than 0.0001 second count as equal.
constexpr double SameInstant = 0.0001 / (24 * 60 * 60);
/// A file system may keep a file's date less exactly than the client does.
constexpr double SameFileDate = 0.0001;

TDateTime DaylightBias(const TIME_ZONE_INFORMATION& Zone) {
    return static_cast<double>(Zone.Bias + Zone.DaylightBias) / MinutesPerDay;
}

TDateTime StandardBias(const TIME_ZONE_INFORMATION& Zone) {
    return static_cast<double>(Zone.Bias + Zone.StandardBias) / MinutesPerDay;
}

bool IsBefore(TDateTime A, TDateTime B) {
    return A < B - SameInstant;
}

/// The date of a rule "n-th weekday of the month"; none when the rule is not of that form.
std::optional<TDateTime> DayInMonth(const SYSTEMTIME& Rule, int Year) {
    constexpr int Last = 5;
    TDateTime First = 0;
    if (Rule.wDay < 1 || Rule.wDay > Last || Rule.wDayOfWeek > 6 ||
        !framework::TryEncodeDate(Year, Rule.wMonth, 1, First))
        return std::nullopt;
    const int UpToWeekday = (Rule.wDayOfWeek - framework::DayOfWeek(First) + 7) % 7;
    int Day = 1 + UpToWeekday + 7 * (Rule.wDay - 1);
    if (Day > framework::DaysInMonth(Year, Rule.wMonth))
        Day -= 7;
    return First + (Day - 1);
}

/// The moment, in the local time in force before it, at which a rule takes effect in a year.
std::optional<TDateTime> Transition(const SYSTEMTIME& Rule, int Year) {
    std::optional<TDateTime> Date;
    if (Rule.wYear == 0) {
        Date = DayInMonth(Rule, Year);
    } else if (Rule.wYear == Year) {
        TDateTime Fixed = 0;
        if (framework::TryEncodeDate(Year, Rule.wMonth, Rule.wDay, Fixed))
            Date = Fixed;
    }
    if (!Date)
        return std::nullopt;
    const int Seconds = (Rule.wHour * 60 + Rule.wMinute) * 60 + Rule.wSecond;
    return *Date + (Seconds + Rule.wMilliseconds / 1000.0) / (MinutesPerDay * 60);
}

bool HasDaylightRules(const TIME_ZONE_INFORMATION& Zone) {
    return Zone.StandardDate.wMonth != 0 && Zone.DaylightDate.wMonth != 0;
}

/// True when daylight saving is in force at a moment in UTC.
bool IsDaylight(TDateTime Value, const TIME_ZONE_INFORMATION& Zone) {
    const int Year = framework::DecodeDate(Value).Year;
    const std::optional<TDateTime> DaylightDate = Transition(Zone.DaylightDate, Year);
    const std::optional<TDateTime> StandardDate = Transition(Zone.StandardDate, Year);
    if (!DaylightDate || !StandardDate)
        return false;

    const TDateTime DaylightStart = *DaylightDate + StandardBias(Zone);
    const TDateTime StandardStart = *StandardDate + DaylightBias(Zone);
    if (IsBefore(DaylightStart, StandardStart))
        return !IsBefore(Value, DaylightStart) && IsBefore(Value, StandardStart);
    // South of the equator the year begins and ends in daylight time.
    if (IsBefore(StandardStart, DaylightStart))
        return IsBefore(Value, StandardStart) || !IsBefore(Value, DaylightStart);
    return false;
}

/// False for the dates of damaged files, which belong to no year of the calendar.
bool IsInCalendar(TDateTime Value) {
    return Value >= framework::EncodeDate(1, 1, 1) && Value < framework::EncodeDate(9999, 12, 31);
}

}  // namespace

TIME_ZONE_INFORMATION PresentTimeZone() {
    TIME_ZONE_INFORMATION Zone{};
    if (::GetTimeZoneInformation(&Zone) == TIME_ZONE_ID_INVALID)
        framework::RaiseLastOSError();
    return Zone;
}

TDateTime InternetTimeToDateTime(const std::string& Text) {
    TDateTime Value = 0;
    if (TryEntriesTime(Text, Value))
        return Value;
    // The system's parser takes almost any text for a date and fills in the present moment.
    if (!LooksLikeInternetTime(Text))
        return 0;
    SYSTEMTIME Time{};
    if (!::InternetTimeToSystemTimeA(Text.c_str(), &Time, 0))
        return 0;
    // Some versions take a year of two figures for one of the first century.
    constexpr WORD FirstSystemYear = 1601;
    if (Time.wYear < FirstSystemYear)
        return 0;
    try {
        return framework::SystemTimeToDateTime(Time);
    } catch (const framework::EConvertError&) {
        return 0;
    }
}

std::string DateTimeInternetTime(TDateTime Value) {
    const SYSTEMTIME Time = framework::DateTimeToSystemTime(Value);
    char Buffer[256] = {};
    if (!::InternetTimeFromSystemTimeA(&Time, INTERNET_RFC1123_FORMAT, Buffer, sizeof(Buffer)))
        framework::RaiseLastOSError();
    return Buffer;
}

TDateTime DateToZeroTimeZone(TDateTime Value) {
    return Value + static_cast<double>(PresentTimeZone().Bias) / MinutesPerDay;
}

TDateTime UTCToLocalTime(TDateTime Value, const TIME_ZONE_INFORMATION& Zone) {
    if (!HasDaylightRules(Zone) || !IsInCalendar(Value))
        return Value - static_cast<double>(Zone.Bias) / MinutesPerDay;
    return Value - (IsDaylight(Value, Zone) ? DaylightBias(Zone) : StandardBias(Zone));
}

TDateTime UTCToLocalTime(TDateTime Value) {
    return UTCToLocalTime(Value, PresentTimeZone());
}

bool CompareDateTime(TDateTime FileDate, TDateTime RepositoryDate) {
    return CompareDateTime(FileDate, RepositoryDate, PresentTimeZone());
}

bool CompareDateTime(TDateTime FileDate, TDateTime RepositoryDate,
                     const TIME_ZONE_INFORMATION& Zone) {
    if (RepositoryDate == 0)
        return true;
    return std::abs(UTCToLocalTime(RepositoryDate, Zone) - FileDate) > SameFileDate;
}

SYSTEMTIME _SystemTimeToLocalTime(const SYSTEMTIME& Time) {
    return framework::DateTimeToSystemTime(
        UTCToLocalTime(framework::SystemTimeToDateTime(Time), PresentTimeZone()));
}

SYSTEMTIME _LocalTimeToSystemTime(const SYSTEMTIME& Time) {
    const TIME_ZONE_INFORMATION Zone = PresentTimeZone();
    const TDateTime Local = framework::SystemTimeToDateTime(Time);
    TDateTime Value = Local + static_cast<double>(Zone.Bias) / MinutesPerDay;
    if (HasDaylightRules(Zone)) {
        Value = Local + DaylightBias(Zone);
        if (!IsDaylight(Value, Zone))
            Value = Local + StandardBias(Zone);
    }
    return framework::DateTimeToSystemTime(Value);
}

}  // namespace tandrel
