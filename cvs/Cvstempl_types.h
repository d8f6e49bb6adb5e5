#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace tandrel {

/// Which symbolic names a tag list shows.
enum TTagShowOption : std::uint8_t { tsoTag, tsoBranch, tsoAll };

/// What a working copy is made to stick to.
enum TStikyType : std::uint8_t { stNone, stHead, stBranch, stTag, stDate, stMostRecent };

/// What a file is compared with.
enum TDiffCompareType : std::uint8_t { dctHead, dctRevision, dctTwoRevision, dctMostRecent };

/// The actions that watchers of a file are told of.
enum TActionEdit : std::uint8_t { aeNone, aeEdit, aeUnedit, aeAll };

/// What a watch command does.
enum TWatchSubcommand : std::uint8_t { wsOn, wsOff, wsAdd, wsRemove };

/// What an update merges.
enum TMergeType : std::uint8_t { mtNone, mtThisRev, mtPlusRevTag };

/// The client's word for each action; empty when there is none to give.
inline constexpr std::array<std::string_view, aeAll + 1> TActionEditName = {"", "edit", "unedit",
                                                                            "all"};

/// The client's word for each watch subcommand.
inline constexpr std::array<std::string_view, wsRemove + 1> TWatchSubCommName = {"on", "off", "add",
                                                                                 "remove"};

namespace detail {

/// The position from 0 of a value among the members up to `Last`; one past it when the value is
/// none of them.
template <class Enumeration>
constexpr std::int32_t MemberIndex(Enumeration Value, Enumeration Last) {
    return Value <= Last ? std::int32_t{Value} : std::int32_t{Last} + 1;
}

}  // namespace detail

/// Positions from 0 for list and radio controls; one past the last member for a value that is
/// no member.
constexpr std::int32_t GetStikyTypeIndex(TStikyType Value) {
    return detail::MemberIndex(Value, stMostRecent);
}
constexpr std::int32_t GetMergeTypeIndex(TMergeType Value) {
    return detail::MemberIndex(Value, mtPlusRevTag);
}
constexpr std::int32_t GetDiffTypeIndex(TDiffCompareType Value) {
    return detail::MemberIndex(Value, dctMostRecent);
}

}  // namespace tandrel
