#include "framework/base/datetime.h"

#include <cmath>
#include <cstdint>

#include "framework/base/exceptions.h"
#include "framework/base/text.h"

namespace framework {

namespace {

constexpr std::int64_t MSecsPerDay = 86'400'000;
/// 1 January of year 1 and 31 December 9999 in days since 30 December 1899.
constexpr std::int64_t FirstDay = -693'593;
constexpr std::int64_t LastDay = 2'958'465;

struct Moment {
    std::int64_t Day;
    int MilliSecond;
};

/// A value in whole milliseconds.
Moment Round(TDateTime value) {
    // The limits also keep the conversion to whole numbers defined.
    if (!(value >= static_cast<double>(FirstDay) && value < static_cast<double>(LastDay + 1)))
        throw EConvertError("Date outside the years 1 to 9999");
    const double day = std::floor(value);
    const std::int64_t milliSecond = std::llround((value - day) * static_cast<double>(MSecsPerDay));
    return {static_cast<std::int64_t>(day) + milliSecond / MSecsPerDay,
            static_cast<int>(milliSecond % MSecsPerDay)};
}

bool IsLeapYear(int year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

/// Days before 1 January of a year since 1 January of year 1.
std::int64_t DaysBeforeYear(int year) {
    const int past = year - 1;
    return std::int64_t{365} * past + past / 4 - past / 100 + past / 400;
}

/// Reads one or two digits with blanks around them from the start of the text.
bool TakeNumber(std::string_view& text, int& number) {
    while (text.starts_with(' '))
        text.remove_prefix(1);
    int digits = 0;
    number = 0;
    for (; digits < 2 && !text.empty() && text[0] >= '0' && text[0] <= '9'; ++digits) {
        number = number * 10 + (text[0] - '0');
        text.remove_prefix(1);
    }
    while (text.starts_with(' '))
        text.remove_prefix(1);
    return digits > 0;
}

bool TakeMilliSecond(std::string_view& text, int& number) {
    if (text.size() < 4)
        return false;
    number = 0;
    for (const char digit : text.substr(1, 3)) {
        if (digit < '0' || digit > '9')
            return false;
        number = number * 10 + (digit - '0');
    }
    text.remove_prefix(4);
    while (text.starts_with(' '))
        text.remove_prefix(1);
    return true;
}

std::string TwoDigits(int number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

}  // namespace

int DaysInMonth(int year, int month) {
    constexpr int Days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12)
        throw EConvertError("Month outside 1 to 12");
    return month == 2 && IsLeapYear(year) ? 29 : Days[month - 1];
}

bool TryEncodeDate(int year, int month, int day, TDateTime& value) {
    if (year < 1 || year > 9999 || month < 1 || month > 12)
        return false;
    if (day < 1 || day > DaysInMonth(year, month))
        return false;
    std::int64_t days = FirstDay + DaysBeforeYear(year) + day - 1;
    for (int past = 1; past < month; ++past)
        days += DaysInMonth(year, past);
    value = static_cast<TDateTime>(days);
    return true;
}

TDateTime EncodeDate(int year, int month, int day) {
    TDateTime value = 0;
    if (!TryEncodeDate(year, month, day, value))
        throw EConvertError("Invalid date");
    return value;
}

TDateTime EncodeTime(int hour, int minute, int second, int milliSecond) {
    if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59 ||
        milliSecond < 0 || milliSecond > 999)
        throw EConvertError("Invalid time");
    const int total = ((hour * 60 + minute) * 60 + second) * 1000 + milliSecond;
    return static_cast<TDateTime>(total) / static_cast<double>(MSecsPerDay);
}

DateParts DecodeDate(TDateTime value) {
    // Rounding up may reach the day behind the last one.
    const std::int64_t day = Round(value).Day;
    if (day > LastDay)
        throw EConvertError("Date outside the years 1 to 9999");
    const std::int64_t sinceFirst = day - FirstDay;

    // An estimate that is never too early.
    int year = static_cast<int>(sinceFirst / 365) + 1;
    while (DaysBeforeYear(year) > sinceFirst)
        --year;
    int rest = static_cast<int>(sinceFirst - DaysBeforeYear(year));
    int month = 1;
    while (rest >= DaysInMonth(year, month))
        rest -= DaysInMonth(year, month++);
    return {year, month, rest + 1};
}

TimeParts DecodeTime(TDateTime value) {
    const int total = Round(value).MilliSecond;
    return {total / 3'600'000, total / 60'000 % 60, total / 1000 % 60, total % 1000};
}

int DayOfWeek(TDateTime value) {
    // Day 0 was a Saturday; FirstDay keeps the sum positive.
    constexpr std::int64_t Weeks = 7 * 100'000;
    return static_cast<int>((Round(value).Day + 6 + Weeks) % 7);
}

std::string TimeToStr(TDateTime value) {
    const TimeParts time = DecodeTime(value);
    return std::to_string(time.Hour) + ':' + TwoDigits(time.Minute) + ':' + TwoDigits(time.Second);
}

TDateTime StrToTime(std::string_view text) {
    int parts[4] = {};
    std::string_view rest = text;
    bool valid = TakeNumber(rest, parts[0]);
    for (int at = 1; valid && at < 3 && rest.starts_with(':'); ++at) {
        rest.remove_prefix(1);
        valid = TakeNumber(rest, parts[at]);
        // Milliseconds stand behind seconds, not minutes.
        if (valid && at == 2 && rest.starts_with('.'))
            valid = TakeMilliSecond(rest, parts[3]);
    }
    if (!valid || !rest.empty() || parts[0] > 23 || parts[1] > 59 || parts[2] > 59)
        throw EConvertError("\"" + std::string(text) + "\" is not a valid time");
    return EncodeTime(parts[0], parts[1], parts[2], parts[3]);
}

}  // namespace framework
