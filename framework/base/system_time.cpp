#include "framework/base/system_time.h"

#include <cstdint>

#include "framework/base/exceptions.h"

namespace framework {

namespace {

/// 1 January 1601, where file times begin.
constexpr TDateTime FileTimeStart = -109'205;
constexpr double FileTimeTicksPerDay = 864e9;
constexpr int FirstSystemYear = 1601;

}  // namespace

TDateTime SystemTimeToDateTime(const SYSTEMTIME& time) {
    return EncodeDate(time.wYear, time.wMonth, time.wDay) +
           EncodeTime(time.wHour, time.wMinute, time.wSecond, time.wMilliseconds);
}

SYSTEMTIME DateTimeToSystemTime(TDateTime value) {
    const DateParts date = DecodeDate(value);
    const TimeParts time = DecodeTime(value);
    if (date.Year < FirstSystemYear)
        throw EConvertError("Date outside the years 1601 to 9999");
    SYSTEMTIME result{};
    result.wYear = static_cast<WORD>(date.Year);
    result.wMonth = static_cast<WORD>(date.Month);
    result.wDayOfWeek = static_cast<WORD>(DayOfWeek(value));
    result.wDay = static_cast<WORD>(date.Day);
    result.wHour = static_cast<WORD>(time.Hour);
    result.wMinute = static_cast<WORD>(time.Minute);
    result.wSecond = static_cast<WORD>(time.Second);
    result.wMilliseconds = static_cast<WORD>(time.MilliSecond);
    return result;
}

TDateTime FileTimeToDateTime(const FILETIME& time) {
    const std::uint64_t ticks =
        (static_cast<std::uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    return FileTimeStart + static_cast<double>(ticks) / FileTimeTicksPerDay;
}

TDateTime Now() {
    SYSTEMTIME time{};
    ::GetLocalTime(&time);
    return SystemTimeToDateTime(time);
}

}  // namespace framework
