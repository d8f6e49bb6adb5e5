#include <gtest/gtest.h>
#include <windows.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "framework/base/datetime.h"
#include "framework/base/exceptions.h"
#include "framework/base/system_time.h"

namespace framework {

void PrintTo(const DateParts& date, std::ostream* out) {
    *out << date.Year << '-' << date.Month << '-' << date.Day;
}
void PrintTo(const TimeParts& time, std::ostream* out) {
    *out << time.Hour << ':' << time.Minute << ':' << time.Second << '.' << time.MilliSecond;
}

namespace {

constexpr double Second = 1.0 / 86'400;

TEST(DateTime, CountsDaysFromTheEndOf1899) {
    EXPECT_EQ(EncodeDate(1899, 12, 30), 0);
    EXPECT_EQ(EncodeDate(1899, 12, 29), -1);
    EXPECT_EQ(EncodeDate(1970, 1, 1), 25'569);
    EXPECT_EQ(EncodeDate(2000, 2, 29), 36'585);
    EXPECT_EQ(EncodeDate(9999, 12, 31), 2'958'465);
    EXPECT_EQ(EncodeDate(1, 1, 1), -693'593);
}

TEST(DateTime, DecodesEveryDayOfTheCalendarAsTheOneAfterTheDayBefore) {
    DateParts expected{1, 1, 1};
    int weekday = 1;
    for (double day = EncodeDate(1, 1, 1); day <= EncodeDate(9999, 12, 31); ++day) {
        ASSERT_EQ(DecodeDate(day), expected);
        ASSERT_EQ(DayOfWeek(day), weekday) << day;
        weekday = (weekday + 1) % 7;
        if (++expected.Day <= DaysInMonth(expected.Year, expected.Month))
            continue;
        expected.Day = 1;
        if (++expected.Month <= 12)
            continue;
        expected.Month = 1;
        ++expected.Year;
    }
    EXPECT_EQ(expected, (DateParts{10'000, 1, 1}));
}

TEST(DateTime, RefusesDatesThatDoNotExist) {
    constexpr DateParts None[] = {{2003, 2, 29}, {1900, 2, 29}, {2004, 4, 31}, {2004, 13, 1},
                                  {2004, 0, 1},  {2004, 1, 0},  {0, 1, 1},     {10'000, 1, 1}};
    for (const DateParts& date : None) {
        double value = 4711;
        EXPECT_FALSE(TryEncodeDate(date.Year, date.Month, date.Day, value));
        EXPECT_EQ(value, 4711);
        EXPECT_THROW(EncodeDate(date.Year, date.Month, date.Day), EConvertError);
    }
    EXPECT_THROW(DaysInMonth(2004, 13), EConvertError);
    EXPECT_THROW(EncodeTime(24, 0, 0, 0), EConvertError);
    EXPECT_THROW(EncodeTime(0, -1, 0, 0), EConvertError);
}

TEST(DateTime, KeepsEverySecondOfADay) {
    const double day = EncodeDate(2026, 11, 21);
    for (int s = 0; s < 86'400; ++s) {
        const TimeParts expected{s / 3600, s / 60 % 60, s % 60, 0};
        ASSERT_EQ(DecodeTime(day + s * Second), expected);
        ASSERT_EQ(DecodeTime(EncodeTime(expected.Hour, expected.Minute, expected.Second, 0)),
                  expected);
    }
}

TEST(DateTime, RoundsDateAndTimeTogetherAtMidnight) {
    const double midnight = EncodeDate(2005, 1, 1);
    const double justBefore = midnight - Second / 10'000;
    EXPECT_EQ(DecodeDate(justBefore), (DateParts{2005, 1, 1}));
    EXPECT_EQ(DecodeTime(justBefore), (TimeParts{0, 0, 0, 0}));
    EXPECT_EQ(DayOfWeek(justBefore), 6);
    EXPECT_EQ(DecodeDate(midnight - Second / 1000), (DateParts{2004, 12, 31}));
    EXPECT_EQ(DecodeTime(midnight - Second / 1000), (TimeParts{23, 59, 59, 999}));
    // Before the first day the time still runs forward.
    EXPECT_EQ(DecodeDate(-0.25), (DateParts{1899, 12, 29}));
    EXPECT_EQ(DecodeTime(-0.25), (TimeParts{18, 0, 0, 0}));
}

TEST(DateTime, RaisesOutsideTheCalendar) {
    const double limits[] = {EncodeDate(1, 1, 1) - 1,
                             EncodeDate(9999, 12, 31) + 1,
                             1e300,
                             -1e300,
                             std::numeric_limits<double>::infinity(),
                             std::nan("")};
    for (const double value : limits) {
        EXPECT_THROW(DecodeDate(value), EConvertError) << value;
        EXPECT_THROW(DecodeTime(value), EConvertError) << value;
    }
    EXPECT_THROW(DecodeDate(EncodeDate(9999, 12, 31) + 1 - Second / 10'000), EConvertError);
}

TEST(DateTime, ReadsTimes) {
    EXPECT_EQ(StrToTime("7"), EncodeTime(7, 0, 0, 0));
    EXPECT_EQ(StrToTime("23:59:59.999"), EncodeTime(23, 59, 59, 999));
    EXPECT_EQ(StrToTime(" 9 : 05 :7 "), EncodeTime(9, 5, 7, 0));
    EXPECT_EQ(TimeToStr(StrToTime("09:05:07")), "9:05:07");
    EXPECT_EQ(TimeToStr(EncodeDate(2004, 3, 5)), "0:00:00");
    for (const char* text :
         {"", " ", ":", "7:", ":30", "24:00", "7:60", "7:00:60", "7:00:00:00", "7:00.500",
          "7:00:00.5", "7:00:00.", "123:00", "-1:00", "7:00 PM", "7.30", "a", "  :  ", "7:0x"})
        EXPECT_THROW(StrToTime(text), EConvertError) << text;
}

TEST(SystemTime, ConvertsBothWays) {
    const SYSTEMTIME time{2004, 3, 5, 5, 14, 7, 9, 123};
    const double value = EncodeDate(2004, 3, 5) + EncodeTime(14, 7, 9, 123);
    EXPECT_DOUBLE_EQ(SystemTimeToDateTime(time), value);
    const SYSTEMTIME back = DateTimeToSystemTime(value);
    EXPECT_EQ(std::memcmp(&back, &time, sizeof(time)), 0);

    FILETIME fileTime{};
    ASSERT_TRUE(::SystemTimeToFileTime(&time, &fileTime));
    EXPECT_NEAR(FileTimeToDateTime(fileTime), value, Second / 10'000);
}

TEST(SystemTime, RaisesForWhatItCannotHold) {
    EXPECT_THROW(DateTimeToSystemTime(EncodeDate(1600, 12, 31)), EConvertError);
    EXPECT_THROW(SystemTimeToDateTime(SYSTEMTIME{}), EConvertError);
    EXPECT_THROW(SystemTimeToDateTime({2004, 3, 5, 35, 14, 7, 9, 0}), EConvertError);
}

TEST(SystemTime, NowIsLocal) {
    FILETIME utc{};
    FILETIME local{};
    ::GetSystemTimeAsFileTime(&utc);
    ::FileTimeToLocalFileTime(&utc, &local);
    EXPECT_NEAR(Now(), FileTimeToDateTime(local), 10 * Second);
}

}  // namespace
}  // namespace framework
