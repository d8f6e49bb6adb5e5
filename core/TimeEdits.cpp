#include "core/TimeEdits.h"

#include "core/Cvs_datetext.h"
#include "framework/base/datetime.h"
#include "framework/base/exceptions.h"
#include "framework/ui/control.h"

namespace tandrel {
namespace {

using namespace framework;

void Replace(int hour, TControl& edit, std::string (*format)(TDateTime)) {
    TDateTime value = 0;
    try {
        const TimeParts time = DecodeTime(StrToTime(edit.Text()));
        value = EncodeTime(hour, time.Minute, time.Second, time.MilliSecond);
    } catch (const EConvertError&) {
        return;  // What the user has typed is not a time yet.
    }
    edit.SetText(format(value));
}

}  // namespace

void SetTime(int hour, TControl& edit) {
    Replace(hour, edit, LTimeToStr);
}
void SetTime2(int hour, TControl& edit) {
    Replace(hour, edit, LTimeToStr2);
}

}  // namespace tandrel
