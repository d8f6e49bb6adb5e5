#pragma once

namespace framework {
class TControl;
}

namespace tandrel {

/// Replaces the hour of the time in an edit, which is then written as LTimeToStr does. A text that
/// is no time, or an hour outside 0 to 23, leaves the edit unchanged. Main thread only.
void SetTime(int hour, framework::TControl& edit);
/// The same, written as LTimeToStr2 does.
void SetTime2(int hour, framework::TControl& edit);

}  // namespace tandrel
