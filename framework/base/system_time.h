#pragma once

#include <windows.h>

#include "framework/api.h"
#include "framework/base/datetime.h"

namespace framework {

/// Conversions between day counts and the system's time records. None changes the time zone.
/// Raises EConvertError when the record holds no date or time.
FRAMEWORK_API TDateTime SystemTimeToDateTime(const SYSTEMTIME& time);
/// Raises EConvertError outside the years that SYSTEMTIME holds (1601 to 9999).
FRAMEWORK_API SYSTEMTIME DateTimeToSystemTime(TDateTime value);
FRAMEWORK_API TDateTime FileTimeToDateTime(const FILETIME& time);

/// The present moment in local time.
FRAMEWORK_API TDateTime Now();

}  // namespace framework
