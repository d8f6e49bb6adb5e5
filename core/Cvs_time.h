#pragma once

#include <windows.h>

#include <string>

#include "core/Cvs_datetext.h"
#include "framework/base/datetime.h"

namespace tandrel {

/// Conversions between local time and UTC, and the time functions that ask the system. All raise
/// framework::EOSError when the system does not tell its time zone.

/// Reads a time stamp of the client's Entries file or an internet date, both in UTC; zero for any
/// other text.
framework::TDateTime InternetTimeToDateTime(const std::string& Text);
/// The internet date of a value in UTC, "Fri, 05 Mar 2004 14:07:09 GMT". Raises
/// framework::EConvertError before the year 1601.
std::string DateTimeInternetTime(framework::TDateTime Value);

/// Local standard time to UTC; daylight saving is not considered.
framework::TDateTime DateToZeroTimeZone(framework::TDateTime Value);
/// UTC to local time by the rules of the present zone, daylight saving included.
framework::TDateTime UTCToLocalTime(framework::TDateTime Value);
/// The same by the rules of a given zone.
framework::TDateTime UTCToLocalTime(framework::TDateTime Value, const TIME_ZONE_INFORMATION& Zone);

/// The system's present time zone.
TIME_ZONE_INFORMATION PresentTimeZone();

/// True when a file counts as changed: its date (local) and the one that the client recorded (UTC,
/// zero for none) are more than 0.0001 day apart.
bool CompareDateTime(framework::TDateTime FileDate, framework::TDateTime RepositoryDate);
/// The same by the rules of a given zone, for those who compare many.
bool CompareDateTime(framework::TDateTime FileDate, framework::TDateTime RepositoryDate,
                     const TIME_ZONE_INFORMATION& Zone);

/// UTC to local time and back. A local time that occurs twice is taken for the daylight one, one
/// that the clock skips for standard time. Raise framework::EConvertError for a record that holds
/// no moment.
SYSTEMTIME _SystemTimeToLocalTime(const SYSTEMTIME& Time);
SYSTEMTIME _LocalTimeToSystemTime(const SYSTEMTIME& Time);

}  // namespace tandrel
