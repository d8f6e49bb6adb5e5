#include "core/Cvs_utils.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "framework/base/exceptions.h"
#include "framework/base/lead_bytes.h"
#include "framework/base/string_list.h"
#include "framework/base/text.h"

namespace tandrel {

namespace {

constexpr std::string_view Perevod = "\r\n";

/// What is left of the text from a position counted from 1.
std::string_view From(std::string_view S, int Pos) {
    if (Pos <= 1)
        return S;
    return S.substr(std::min(static_cast<std::size_t>(Pos) - 1, S.size()));
}

int Length(std::string_view S) {
    return static_cast<int>(S.size());
}

}  // namespace

std::string SlashSep(std::string_view Dir, std::string_view Name) {
    std::string Result;
    if (Dir.empty())
        return Result;
    Result.reserve(Dir.size() + Name.size() + 1);
    Result = Dir;
    if (!framework::EndsWith(Dir, '\\'))
        Result += '\\';
    Result += Name;
    return Result;
}

std::string SlashSemicolon(std::string_view S) {
    std::string Result(S);
    if (!S.empty() && S.back() != ';')
        Result += ';';
    return Result;
}

std::string SetApostrophe(std::string_view S) {
    std::string Result;
    if (S.empty())
        return Result;
    if (S.front() != '"')
        Result += '"';
    Result += S;
    if (S.back() != '"')
        Result += '"';
    return Result;
}

std::string RemoveSlashSep(std::string_view S) {
    if (framework::EndsWith(S, '\\'))
        S.remove_suffix(1);
    return std::string(S);
}

std::string RemoveBackSlash(std::string_view S) {
    if (S.starts_with('/'))
        S.remove_prefix(1);
    return std::string(S);
}

std::string FirstChar(std::string_view S) {
    return std::string(S.empty() ? S : S.substr(0, framework::LetterSize(S, 0)));
}

int LastPos(std::string_view S, std::string_view Ch) {
    std::size_t At = Ch.empty() ? std::string_view::npos : S.rfind(Ch);
    while (framework::IsTrailByte(S, At))
        At = S.rfind(Ch, At - 1);
    return At == std::string_view::npos ? 0 : static_cast<int>(At) + 1;
}

std::string LeftPadCh(std::string_view S, char Ch, int Len) {
    std::string Result;
    if (Len > Length(S))
        Result.assign(static_cast<std::size_t>(Len) - S.size(), Ch);
    Result += S;
    return Result;
}

std::string Add_Perevod(std::string_view S) {
    std::string Result(S);
    Result += Perevod;
    return Result;
}

void CopyFromPosToString(std::string_view S, int Pos, char Ch, std::string& Result) {
    const std::string_view Rest = From(S, Pos);
    if (const std::size_t At = framework::FindFirstOf(Rest, {&Ch, 1}); At != Rest.npos)
        Result = std::string(Rest.substr(0, At));
}

int CountFromPosToString(std::string_view S, int Pos, char Ch) {
    const std::string_view Rest = From(S, Pos);
    return Length(Rest.substr(0, framework::FindFirstOf(Rest, {&Ch, 1})));
}

int CountFromPosToPerevod(std::string_view S, int Pos) {
    const std::string_view Rest = From(S, Pos);
    return Length(Rest.substr(0, Rest.find(Perevod)));
}

bool IsPerevodBeforePos(std::string_view S, int Pos) {
    for (std::int64_t Start = std::int64_t{Pos} - 2; Start <= Pos; ++Start) {
        if (Start < 1 || Start > Length(S))
            continue;
        if (S.substr(static_cast<std::size_t>(Start) - 1).starts_with(Perevod))
            return true;
    }
    return false;
}

std::string CopyStartFromPos_BeforePos(std::string_view S, int From, int Before) {
    if (From > Before || From > Length(S))
        return {};
    const int Start = std::max(From, 1);
    const int End = std::max(Before, From + 1);
    if (End <= Start)
        return {};
    return std::string(
        S.substr(static_cast<std::size_t>(Start) - 1, static_cast<std::size_t>(End - Start)));
}

std::string Copy_FromPosToEnd(std::string_view S, int Pos) {
    return std::string(From(S, Pos));
}

std::string RemoveBeforeString(std::string_view S, std::string_view Sub) {
    const std::size_t At = Sub.empty() ? std::string_view::npos : framework::FindText(S, Sub);
    return At == std::string_view::npos ? std::string() : std::string(S.substr(At + Sub.size()));
}

void ClearEmptyLines(framework::TStringList& List) {
    List.RemoveEmpty();
}

std::string GetRelativePath(std::string_view Root, std::string_view Dir,
                            std::string_view FileName) {
    const std::string UpperRoot = framework::UpperCase(SlashSep(Root, ""));
    const std::string UpperDir = framework::UpperCase(SlashSep(Dir, ""));
    if (UpperDir == UpperRoot)
        return std::string(FileName);

    const std::size_t At =
        UpperRoot.empty() ? std::string::npos : framework::FindText(UpperDir, UpperRoot);
    if (At == std::string::npos)
        throw framework::Exception("File " + SlashSep(Dir, FileName) +
                                   " is not locating in  working direktory ");
    return SlashSep(SlashSep(Dir, "").substr(At + UpperRoot.size()), FileName);
}

void LAppend(std::string& Text, std::string_view Piece) {
    if (!Text.empty())
        Text += ' ';
    Text += Piece;
}

std::string LConcat(std::initializer_list<std::string_view> Items) {
    std::string Result;
    for (const std::string_view Item : Items)
        LAppend(Result, Item);
    return Result;
}

}  // namespace tandrel
