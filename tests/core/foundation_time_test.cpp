// The conversions between the client's time texts, UTC and local time. A mistake here marks files
// as changed that nobody touched, or hides a change.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <map>

#include "core/Cvs_time.h"
#include "core/TimeEdits.h"
#include "framework/base/exceptions.h"
#include "framework/base/system_time.h"
#include "framework/ui/control.h"

namespace tandrel {
namespace {

using framework::EncodeDate;
using framework::EncodeTime;
using framework::TDateTime;

constexpr double Second = 1.0 / 86'400;
constexpr double Hour = 1.0 / 24;

TDateTime At(int Year, int Month, int Day, int Hours = 0, int Minutes = 0, int Seconds = 0) {
    return EncodeDate(Year, Month, Day) + EncodeTime(Hours, Minutes, Seconds, 0);
}

/// A moment to the second, for comparing and for reading in a failure.
std::string Show(TDateTime Value) {
    const auto Date = framework::DecodeDate(Value + Second / 10);
    const auto Time = framework::DecodeTime(Value + Second / 10);
    char Text[64];
    std::snprintf(Text, sizeof(Text), "%d-%02d-%02d %02d:%02d:%02d", Date.Year, Date.Month,
                  Date.Day, Time.Hour, Time.Minute, Time.Second);
    return Text;
}

// The rules of zones as the system gives them: the n-th weekday (5: the last) of a month.

SYSTEMTIME Rule(WORD Month, WORD Weekday, WORD Nth, WORD RuleHour) {
    SYSTEMTIME Result{};
    Result.wMonth = Month;
    Result.wDayOfWeek = Weekday;
    Result.wDay = Nth;
    Result.wHour = RuleHour;
    return Result;
}

TIME_ZONE_INFORMATION Zone(LONG Bias, SYSTEMTIME Daylight, SYSTEMTIME Standard) {
    TIME_ZONE_INFORMATION Result{};
    Result.Bias = Bias;
    Result.DaylightDate = Daylight;
    Result.DaylightBias = -60;
    Result.StandardDate = Standard;
    return Result;
}

TIME_ZONE_INFORMATION Berlin() {
    return Zone(-60, Rule(3, 0, 5, 2), Rule(10, 0, 5, 3));
}
TIME_ZONE_INFORMATION NewYork() {
    return Zone(300, Rule(3, 0, 2, 2), Rule(11, 0, 1, 2));
}
TIME_ZONE_INFORMATION Sydney() {
    return Zone(-600, Rule(10, 0, 1, 2), Rule(4, 0, 1, 3));
}
TIME_ZONE_INFORMATION Tokyo() {
    return Zone(-540, {}, {});
}

struct Conversion {
    TDateTime Utc;
    const char* Local;
};

/// Around both changes of 2026 in each zone, and in the middle of both halves of the year.
const std::map<std::string, std::vector<Conversion>> Conversions = {
    {"UTC", {{At(2026, 1, 1), "2026-01-01 00:00:00"}, {At(2026, 7, 1), "2026-07-01 00:00:00"}}},
    {"Europe/Berlin",
     {{At(2026, 1, 1), "2026-01-01 01:00:00"},
      {At(2026, 3, 29, 0, 59, 59), "2026-03-29 01:59:59"},
      {At(2026, 3, 29, 1), "2026-03-29 03:00:00"},
      {At(2026, 7, 1), "2026-07-01 02:00:00"},
      {At(2026, 10, 25, 0, 59, 59), "2026-10-25 02:59:59"},
      {At(2026, 10, 25, 1), "2026-10-25 02:00:00"},
      {At(2026, 12, 31, 23, 30), "2027-01-01 00:30:00"}}},
    {"America/New_York",
     {{At(2026, 1, 1, 2), "2025-12-31 21:00:00"},
      {At(2026, 3, 8, 6, 59, 59), "2026-03-08 01:59:59"},
      {At(2026, 3, 8, 7), "2026-03-08 03:00:00"},
      {At(2026, 7, 1), "2026-06-30 20:00:00"},
      {At(2026, 11, 1, 5, 59, 59), "2026-11-01 01:59:59"},
      {At(2026, 11, 1, 6), "2026-11-01 01:00:00"}}},
    {"Australia/Sydney",
     {{At(2025, 12, 31, 23), "2026-01-01 10:00:00"},
      {At(2026, 4, 4, 15, 59, 59), "2026-04-05 02:59:59"},
      {At(2026, 4, 4, 16), "2026-04-05 02:00:00"},
      {At(2026, 7, 1), "2026-07-01 10:00:00"},
      {At(2026, 10, 3, 15, 59, 59), "2026-10-04 01:59:59"},
      {At(2026, 10, 3, 16), "2026-10-04 03:00:00"}}},
    {"Asia/Tokyo",
     {{At(2026, 1, 1), "2026-01-01 09:00:00"}, {At(2026, 7, 1), "2026-07-01 09:00:00"}}},
};

TEST(ExplicitZone, ConvertsAroundBothChanges) {
    const std::pair<const char*, TIME_ZONE_INFORMATION> Zones[] = {{"Europe/Berlin", Berlin()},
                                                                   {"America/New_York", NewYork()},
                                                                   {"Australia/Sydney", Sydney()},
                                                                   {"Asia/Tokyo", Tokyo()}};
    for (const auto& [Name, Record] : Zones)
        for (const auto& [Utc, Local] : Conversions.at(Name))
            EXPECT_EQ(Show(UTCToLocalTime(Utc, Record)), Local) << Name << ' ' << Show(Utc);
}

TEST(ExplicitZone, AgreesWithTheSystemHourByHour) {
    for (TIME_ZONE_INFORMATION Record : {Berlin(), NewYork(), Sydney(), Tokyo()}) {
        // The half hour keeps clear of the changes themselves.
        for (double Utc = At(2024, 1, 1, 0, 30); Utc < At(2028, 1, 1); Utc += Hour) {
            const SYSTEMTIME Time = framework::DateTimeToSystemTime(Utc);
            SYSTEMTIME Local{};
            ASSERT_TRUE(::SystemTimeToTzSpecificLocalTime(&Record, &Time, &Local));
            ASSERT_NEAR(UTCToLocalTime(Utc, Record), framework::SystemTimeToDateTime(Local),
                        Second / 100)
                << Show(Utc) << " bias " << Record.Bias;
        }
    }
}

TEST(ExplicitZone, FindsTheNthWeekday) {
    // February 2026 begins on a Sunday and has four of each weekday: there is no fifth.
    for (WORD Nth = 1; Nth <= 5; ++Nth) {
        const auto Record = Zone(0, Rule(2, 0, Nth, 0), Rule(6, 0, 1, 0));
        const TDateTime Start = At(2026, 2, 1) + 7 * (std::min<WORD>(Nth, 4) - 1);
        EXPECT_EQ(Show(UTCToLocalTime(Start, Record)), Show(Start + Hour)) << Nth;
        EXPECT_EQ(Show(UTCToLocalTime(Start - Second, Record)), Show(Start - Second)) << Nth;
    }
}

TEST(ExplicitZone, TakesARuleWithAYearForThatYearAlone) {
    SYSTEMTIME Start = Rule(3, 0, 10, 2);
    SYSTEMTIME End = Rule(10, 0, 20, 2);
    Start.wYear = End.wYear = 2026;
    const TIME_ZONE_INFORMATION Record = Zone(0, Start, End);
    EXPECT_EQ(Show(UTCToLocalTime(At(2026, 3, 10, 1, 59, 59), Record)), "2026-03-10 01:59:59");
    EXPECT_EQ(Show(UTCToLocalTime(At(2026, 3, 10, 2), Record)), "2026-03-10 03:00:00");
    EXPECT_EQ(Show(UTCToLocalTime(At(2026, 10, 20, 1), Record)), "2026-10-20 01:00:00");
    EXPECT_EQ(Show(UTCToLocalTime(At(2025, 7, 1), Record)), "2025-07-01 00:00:00");
}

TEST(ExplicitZone, UsesTheBareBiasWithoutBothRules) {
    TIME_ZONE_INFORMATION Record = Zone(-60, Rule(3, 0, 5, 2), {});
    Record.StandardBias = 30;
    EXPECT_EQ(Show(UTCToLocalTime(At(2026, 7, 1), Record)), "2026-07-01 01:00:00");
    // With both rules the standard bias counts, too.
    Record.StandardDate = Rule(10, 0, 5, 3);
    EXPECT_EQ(Show(UTCToLocalTime(At(2026, 1, 1), Record)), "2026-01-01 00:30:00");
}

TEST(ExplicitZone, TakesAnyValue) {
    EXPECT_DOUBLE_EQ(UTCToLocalTime(0, Berlin()), Hour);
    EXPECT_DOUBLE_EQ(UTCToLocalTime(1e9, Berlin()), 1e9 + Hour);
    EXPECT_DOUBLE_EQ(UTCToLocalTime(-1e9, Berlin()), -1e9 + Hour);
}

// The zone of the process. These run once in each of several zones.

std::string ZoneName() {
    const char* Name = std::getenv("TZ");
    return Name == nullptr ? "" : Name;
}

TEST(PresentZone, ConvertsAroundBothChanges) {
    const auto Expected = Conversions.find(ZoneName());
    ASSERT_NE(Expected, Conversions.end()) << "nothing is known of \"" << ZoneName() << '"';
    for (const auto& [Utc, Local] : Expected->second) {
        EXPECT_EQ(Show(UTCToLocalTime(Utc)), Local);
        const SYSTEMTIME Record =
            _SystemTimeToLocalTime(framework::DateTimeToSystemTime(Utc + Second / 1000));
        EXPECT_EQ(Show(framework::SystemTimeToDateTime(Record)), Local);
    }
}

TEST(PresentZone, ConvertsLocalRecordsBackToUtc) {
    for (double Utc = At(2026, 1, 1, 0, 30); Utc < At(2027, 1, 1); Utc += Hour) {
        const SYSTEMTIME Local = _SystemTimeToLocalTime(framework::DateTimeToSystemTime(Utc));
        const TDateTime Back = framework::SystemTimeToDateTime(_LocalTimeToSystemTime(Local));
        // The hour that occurs twice is taken for the first one.
        const bool Twice = std::abs(UTCToLocalTime(Utc - Hour) - UTCToLocalTime(Utc)) < Second;
        ASSERT_NEAR(Back, Twice ? Utc - Hour : Utc, Second / 100) << Show(Utc);
    }
}

TEST(PresentZone, ConsidersNoDaylightSavingOnTheWayToUtc) {
    TIME_ZONE_INFORMATION Present{};
    ::GetTimeZoneInformation(&Present);
    for (const TDateTime Value : {At(2026, 1, 15), At(2026, 7, 15)})
        EXPECT_NEAR(DateToZeroTimeZone(Value) - Value, Present.Bias / 1440.0, Second / 100);
}

TEST(PresentZone, FindsAFileUnchangedInEverySeason) {
    for (const TDateTime Utc : {At(2026, 1, 15, 12), At(2026, 7, 15, 12)}) {
        const TDateTime FileDate = UTCToLocalTime(Utc);
        EXPECT_FALSE(CompareDateTime(FileDate, Utc));
        EXPECT_FALSE(CompareDateTime(FileDate + 8.6 * Second, Utc));
        EXPECT_FALSE(CompareDateTime(FileDate - 8.6 * Second, Utc));
        EXPECT_TRUE(CompareDateTime(FileDate + 8.7 * Second, Utc));
        EXPECT_TRUE(CompareDateTime(FileDate - 8.7 * Second, Utc));
        EXPECT_TRUE(CompareDateTime(FileDate, 0));
    }
    EXPECT_TRUE(CompareDateTime(0, 0));
}

TEST(OptionDates, LeaveTheTimeOutBeforeOneOClock) {
    EXPECT_EQ(CustomDateTimetoStr(At(2004, 3, 5, 14, 7, 9)), "2004-3-5 14:07:09");
    EXPECT_EQ(CustomDateTimetoStr2(At(2004, 3, 5, 14, 7, 9)), "2004/3/5 14:07:09");
    EXPECT_EQ(CustomDateTimetoStr(At(2004, 12, 31, 1)), "2004-12-31 01:00:00");
    EXPECT_EQ(CustomDateTimetoStr(At(2004, 3, 5, 0, 59, 59)), "2004-3-5");
    EXPECT_EQ(CustomDateTimetoStr2(At(2004, 3, 5)), "2004/3/5");
    for (const TDateTime None : {0.0, -1.0, -0.5})
        EXPECT_EQ(CustomDateTimetoStr(None), "");
}

TEST(LogDates, AreReadInBothForms) {
    const std::pair<const char*, const char*> Cases[] = {
        {"2004/03/05 14:07:09", "2004-03-05 14:07:09"},
        {"2004/03/05", "2004-03-05 00:00:00"},
        {"2004/03/05 noon", "2004-03-05 00:00:00"},
        {"2026-11-21 07:54:01 +0000", "2026-11-21 07:54:01"},
        {"2026-11-21 07:54:01 +0130", "2026-11-21 06:24:01"},
        {"2026-12-31 22:54:01 -0500", "2027-01-01 03:54:01"},
    };
    for (const auto& [Text, Expected] : Cases)
        EXPECT_EQ(Show(CustomStrToDateTime2(Text)), Expected) << Text;
    for (const char* const Text :
         {"", "/", "2004", "2004/3/5 14:07:09", "2004/00/05 14:07:09", "2004/13/05 14:07:09",
          "2004/02/30 14:07:09", "abcd/03/05", "99999999999/03/05", "2026-11-21 07:54:01",
          "2026-11-21 25:54:01 +0000", "2026-02-30 07:54:01 +0000", "2026-11-21 07:54:01 +000"})
        EXPECT_EQ(CustomStrToDateTime2(Text), 0) << Text;
}

TEST(EntriesTimes, AreReadAsTheClientWritesThem) {
    const std::pair<const char*, const char*> Cases[] = {
        {"Fri Mar  5 14:07:09 2004", "2004-03-05 14:07:09"},
        {"Fri Mar 05 14:07:09 2004", "2004-03-05 14:07:09"},
        {"Sun Feb 29 23:59:59 2004", "2004-02-29 23:59:59"},
        {"Thu Jan  1 00:00:00 1970", "1970-01-01 00:00:00"},
        {"Fri, 05 Mar 2004 14:07:09 GMT", "2004-03-05 14:07:09"},
        {"Fri, 5 Mar 2004 14:07:09 GMT", "2004-03-05 14:07:09"},
    };
    for (const auto& [Text, Expected] : Cases)
        EXPECT_EQ(Show(InternetTimeToDateTime(Text)), Expected) << Text;
}

TEST(EntriesTimes, AreZeroForEverythingElse) {
    for (const char* const Text : {"",
                                   "dummy timestamp",
                                   "Result of merge",
                                   "Result of merge+Fri Mar  5 14:07:09 2004",
                                   "Initial x.c",
                                   "Fri Mar  5 14:07:09 2004 ",
                                   "fri mar  5 14:07:09 2004",
                                   "Fri Mar   5 14:07:09 2004",
                                   "Xyz Mar  5 14:07:09 2004",
                                   "Fri Mrz  5 14:07:09 2004",
                                   "Fri Feb 30 14:07:09 2004",
                                   "Fri Mar  0 14:07:09 2004",
                                   "Fri Mar  5 24:07:09 2004",
                                   "Fri Mar  5 14:07:09 0000",
                                   "Fri Mar  5 14:07:09 04",
                                   "2004-03-05 14:07:09",
                                   "Fri, 35 Mar 2004 14:07:09 GMT",
                                   "Fri, 05 Mar 2004",
                                   "Fri, 05 Mar 2004 14:07:09 +0100",
                                   "Fri, 05 Mar 2004 14:07:09 GMT+5",
                                   "05 Mar 2004 14:07:09 GMT",
                                   ", ",
                                   "Fri, "})
        EXPECT_EQ(InternetTimeToDateTime(Text), 0) << Text;
}

TEST(EntriesTimes, OfTwoFiguresForTheYearAreOfThisAgeOrZero) {
    const TDateTime Value = InternetTimeToDateTime("Friday, 05-Mar-04 14:07:09 GMT");
    EXPECT_TRUE(Value == 0 || Show(Value) == "2004-03-05 14:07:09") << Show(Value);
}

TEST(EntriesTimes, AreWrittenAsInternetDates) {
    EXPECT_EQ(DateTimeInternetTime(At(2004, 3, 5, 14, 7, 9)), "Fri, 05 Mar 2004 14:07:09 GMT");
    const TDateTime Value = At(2026, 11, 21, 7, 54, 1);
    EXPECT_NEAR(InternetTimeToDateTime(DateTimeInternetTime(Value)), Value, Second / 100);
}

TEST(TimeEdits, ShowTwoFiguresForTheHour) {
    EXPECT_EQ(LTimeToStr(At(2004, 3, 5, 9, 5, 7)), "09:05");
    EXPECT_EQ(LTimeToStr2(At(2004, 3, 5, 9, 5, 7)), "09:05:07");
    EXPECT_EQ(LTimeToStr(0), "00:00");
    EXPECT_EQ(LTimeToStr2(At(2004, 3, 5, 23, 59, 59)), "23:59:59");
}

/// Holds a text as an edit does, without a window.
class EditWithoutWindow : public framework::TControl {
public:
    explicit EditWithoutWindow(std::string Content)
        : TControl(nullptr), Content_(std::move(Content)) {}
    std::string Text() const override { return Content_; }
    void SetText(const std::string& Content) override { Content_ = Content; }

private:
    std::string Content_;
};

TEST(TimeEdits, TakeANewHour) {
    const auto With = [](auto Set, int NewHour, const char* Content) {
        EditWithoutWindow Edit(Content);
        Set(NewHour, Edit);
        return Edit.Text();
    };
    EXPECT_EQ(With(SetTime, 7, "14:30"), "07:30");
    EXPECT_EQ(With(SetTime, 23, "9:05:59"), "23:05");
    EXPECT_EQ(With(SetTime2, 0, "14:30:15"), "00:30:15");
    EXPECT_EQ(With(SetTime2, 9, "14:30"), "09:30:00");
    for (const char* const Content : {"", "  :  :  ", "25:00:00", "noon"}) {
        EXPECT_EQ(With(SetTime, 7, Content), Content);
        EXPECT_EQ(With(SetTime2, 7, Content), Content);
    }
    EXPECT_EQ(With(SetTime2, 24, "14:30:15"), "14:30:15");
    EXPECT_EQ(With(SetTime2, -1, "14:30:15"), "14:30:15");
}

}  // namespace
}  // namespace tandrel
