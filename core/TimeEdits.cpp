#include "core/TimeEdits.h"

#include "core/Cvs_datetext.h"
#include "framework/base/datetime.h"
#include "framework/base/exceptions.h"
#include "framework/ui/edits.h"

namespace tandrel {
namespace {

using namespace framework;

void Replace(int hour, TMaskEdit& edit, std::string (*format)(TDateTime)) {
    try {
        const TimeParts time = DecodeTime(StrToTime(edit.Text()));
        edit.SetText(format(EncodeTime(hour, time.Minute, time.Second, time.MilliSecond)));
    } catch (const EConvertError&) {
        // What the user has typed is not a time yet.
    }
}

}  // namespace

void SetTime(int hour, TMaskEdit& edit) {
    Replace(hour, edit, LTimeToStr);
}
void SetTime2(int hour, TMaskEdit& edit) {
    Replace(hour, edit, LTimeToStr2);
}

}  // namespace tandrel
