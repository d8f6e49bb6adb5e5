#pragma once

namespace framework {
class TMaskEdit;
}

namespace tandrel {

/// Replaces the hour of the edit's time, hours and minutes; a text that is no time stays. Main
/// thread only. @param hour 0 to 23.
void SetTime(int hour, framework::TMaskEdit& edit);
/// The same for an edit that shows seconds, too.
void SetTime2(int hour, framework::TMaskEdit& edit);

}  // namespace tandrel
