#include "core/Cvs_datetext.h"

#include <array>
#include <cctype>
#include <charconv>
#include <cstddef>

#include "core/Cvs_utils.h"
#include "framework/base/exceptions.h"

namespace tandrel {

using framework::DateParts;
using framework::TDateTime;
using framework::TimeParts;

namespace {

constexpr std::array<std::string_view, 7> DayNames = {"Sun", "Mon", "Tue", "Wed",
                                                      "Thu", "Fri", "Sat"};
constexpr std::array<std::string_view, 12> MonthNames = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

std::string OptionText(TDateTime Value, char Separator) {
    if (!(Value > 0))
        return {};
    const DateParts Date = framework::DecodeDate(Value);
    const TimeParts Time = framework::DecodeTime(Value);
    std::string Result = std::to_string(Date.Year) + Separator + std::to_string(Date.Month) +
                         Separator + std::to_string(Date.Day);
    if (Time.Hour == 0)
        return Result;
    Result += ' ' + LeftPadCh(std::to_string(Time.Hour), '0', 2);
    Result += ':' + LeftPadCh(std::to_string(Time.Minute), '0', 2);
    Result += ':' + LeftPadCh(std::to_string(Time.Second), '0', 2);
    return Result;
}

/// The whole text as a number; zero when it is not one.
int NumberOrZero(std::string_view Text) {
    int Number = 0;
    const char* const End = Text.data() + Text.size();
    const auto [Stop, Error] = std::from_chars(Text.data(), End, Number);
    return Error == std::errc() && Stop == End ? Number : 0;
}

/// True when the text has the form of the pattern: "0" stands for a digit, "a" for a letter, "_"
/// for a digit or a blank, any other character for itself.
bool HasForm(std::string_view Text, std::string_view Pattern) {
    if (Text.size() != Pattern.size())
        return false;
    for (std::size_t At = 0; At < Text.size(); ++At) {
        const auto Ch = static_cast<unsigned char>(Text[At]);
        const bool Digit = Ch >= '0' && Ch <= '9';
        const char Wanted = Pattern[At];
        if (Wanted == '0'   ? Digit
            : Wanted == 'a' ? std::isalpha(Ch) != 0
            : Wanted == '_' ? Digit || Ch == ' '
                            : Text[At] == Wanted)
            continue;
        return false;
    }
    return true;
}

template <std::size_t N>
bool IsOneOf(std::string_view Name, const std::array<std::string_view, N>& Names, int& Position) {
    for (std::size_t At = 0; At < N; ++At) {
        if (Names[At] != Name)
            continue;
        Position = static_cast<int>(At);
        return true;
    }
    return false;
}

/// The day from figures; false when there is none. A year, month or day of zero is none.
bool TryDay(std::string_view Year, std::string_view Month, std::string_view Day, TDateTime& Value) {
    return framework::TryEncodeDate(NumberOrZero(Year), NumberOrZero(Month), NumberOrZero(Day),
                                    Value);
}

bool TryTime(std::string_view Text, TDateTime& Value) {
    try {
        Value = framework::StrToTime(Text);
        return true;
    } catch (const framework::EConvertError&) {
        return false;
    }
}

/// A date and time with dashes and the offset from UTC, "2004-03-05 15:07:09 +0100".
bool TryOffsetDate(std::string_view Text, TDateTime& Value) {
    constexpr std::string_view Form = "0000-00-00 00:00:00 ";
    constexpr int MinutesPerDay = 24 * 60;
    if (!HasForm(Text, std::string(Form) + "+0000") && !HasForm(Text, std::string(Form) + "-0000"))
        return false;
    TDateTime Day = 0;
    TDateTime Time = 0;
    if (!TryDay(Text.substr(0, 4), Text.substr(5, 2), Text.substr(8, 2), Day))
        return false;
    if (!TryTime(Text.substr(11, 8), Time))
        return false;
    const int Minutes = NumberOrZero(Text.substr(21, 2)) * 60 + NumberOrZero(Text.substr(23, 2));
    const double Offset = static_cast<double>(Minutes) / MinutesPerDay;
    Value = Text[20] == '-' ? Day + Time + Offset : Day + Time - Offset;
    return true;
}

}  // namespace

std::string CustomDateTimetoStr(TDateTime Value) {
    return OptionText(Value, '-');
}

std::string CustomDateTimetoStr2(TDateTime Value) {
    return OptionText(Value, '/');
}

TDateTime CustomStrToDateTime2(std::string_view Text) {
    TDateTime Value = 0;
    if (TryOffsetDate(Text, Value))
        return Value;

    std::string Year;
    std::string Month;
    CopyFromPosToString(Text, 1, '/', Year);
    CopyFromPosToString(Text, 6, '/', Month);
    const std::string Day = CopyStartFromPos_BeforePos(Text, 9, 11);
    if (!TryDay(Year, Month, Day, Value))
        return 0;

    TDateTime Time = 0;
    TryTime(Copy_FromPosToEnd(Text, 12), Time);
    return Value + Time;
}

bool TryEntriesTime(std::string_view Text, TDateTime& Value) {
    int DayName = 0;
    int Month = 0;
    if (!HasForm(Text, "aaa aaa _0 00:00:00 0000"))
        return false;
    if (!IsOneOf(Text.substr(0, 3), DayNames, DayName))
        return false;
    if (!IsOneOf(Text.substr(4, 3), MonthNames, Month))
        return false;
    // Run-time libraries pad the day with a blank or with a zero.
    const std::string_view DayText = Text.substr(Text[8] == ' ' ? 9 : 8, Text[8] == ' ' ? 1 : 2);
    TDateTime Day = 0;
    TDateTime Time = 0;
    if (!framework::TryEncodeDate(NumberOrZero(Text.substr(20)), Month + 1, NumberOrZero(DayText),
                                  Day) ||
        !TryTime(Text.substr(11, 8), Time))
        return false;
    Value = Day + Time;
    return true;
}

bool LooksLikeInternetTime(std::string_view Text) {
    int DayName = 0;
    const std::size_t Comma = Text.find(", ");
    if (Comma == std::string_view::npos || !IsOneOf(Text.substr(0, 3), DayNames, DayName))
        return false;
    std::string_view Rest = Text.substr(Comma + 2);
    if (Rest.ends_with(" GMT"))
        Rest.remove_suffix(4);
    return HasForm(Rest, "00 aaa 0000 00:00:00") || HasForm(Rest, "0 aaa 0000 00:00:00") ||
           HasForm(Rest, "00-aaa-0000 00:00:00") || HasForm(Rest, "00-aaa-00 00:00:00");
}

std::string LTimeToStr(TDateTime Value) {
    std::string Text = framework::TimeToStr(Value);
    Text.resize(Text.size() - 3);
    return LeftPadCh(Text, '0', 5);
}

std::string LTimeToStr2(TDateTime Value) {
    return LeftPadCh(framework::TimeToStr(Value), '0', 8);
}

}  // namespace tandrel
