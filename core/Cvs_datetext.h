#pragma once

#include <string>
#include <string_view>

#include "framework/base/datetime.h"

namespace tandrel {

/// The texts in which the client takes and gives dates and times, and those of the dialogs' time
/// edits. No function here changes the time zone.

/// A date for the client's -D option, such as 2004-3-5 14:07:09. The time is left out before one
/// o'clock; empty when the value is not greater than zero. Raises framework::EConvertError beyond
/// the year 9999.
std::string CustomDateTimetoStr(framework::TDateTime Value);
/// The same with slashes in the date, such as 2004/3/5 14:07:09.
std::string CustomDateTimetoStr2(framework::TDateTime Value);

/// Reads a date of the client's log: "2004/03/05 14:07:09", which is UTC, or with dashes and an
/// offset, "2004-03-05 15:07:09 +0100", which is turned into UTC. Zero when there is no date in it;
/// a time that cannot be read counts as midnight.
framework::TDateTime CustomStrToDateTime2(std::string_view Text);

/// Reads a time stamp as the client writes it into its Entries file, "Fri Mar  5 14:07:09 2004", in
/// UTC. False, and `Value` left alone, for any text that departs from this form.
bool TryEntriesTime(std::string_view Text, framework::TDateTime& Value);
/// True for texts such as "Fri, 05 Mar 2004 14:07:09 GMT" and "Friday, 05-Mar-04 14:07:09 GMT",
/// whatever day and time the figures stand for.
bool LooksLikeInternetTime(std::string_view Text);

/// Hours and minutes, "09:05".
std::string LTimeToStr(framework::TDateTime Value);
/// Hours, minutes and seconds, "09:05:30".
std::string LTimeToStr2(framework::TDateTime Value);

}  // namespace tandrel
