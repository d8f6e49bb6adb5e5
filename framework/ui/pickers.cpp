#include "framework/ui/pickers.h"

#include <commctrl.h>

namespace framework {
namespace {

void UseClass(DWORD classes) {
    const INITCOMMONCONTROLSEX wanted{sizeof wanted, classes};
    ::InitCommonControlsEx(&wanted);
}

}  // namespace

TDateTimePicker::TDateTimePicker(TControl& parent) : TControl(&parent) {
    UseClass(ICC_DATE_CLASSES);
    CreateHandle(DATETIMEPICK_CLASSW,
                 WS_CHILD | WS_VISIBLE | WS_TABSTOP | DTS_SHORTDATECENTURYFORMAT, 0,
                 parent.Handle());
}

TDateTime TDateTimePicker::Date() const {
    SYSTEMTIME date{};
    ::SendMessageW(Handle(), DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&date));
    return EncodeDate(date.wYear, date.wMonth, date.wDay);
}

void TDateTimePicker::SetDate(TDateTime value) {
    const DateParts parts = DecodeDate(value);
    SYSTEMTIME date{};
    date.wYear = static_cast<WORD>(parts.Year);
    date.wMonth = static_cast<WORD>(parts.Month);
    date.wDay = static_cast<WORD>(parts.Day);
    date.wDayOfWeek = static_cast<WORD>(DayOfWeek(value));
    ::SendMessageW(Handle(), DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&date));
}

LRESULT TDateTimePicker::Notify(NMHDR& header) {
    if (header.code == static_cast<UINT>(DTN_DATETIMECHANGE) && OnChange)
        OnChange(this);
    return 0;
}

TUpDown::TUpDown(TControl& parent, int least, int greatest) : TControl(&parent) {
    UseClass(ICC_UPDOWN_CLASS);
    CreateHandle(UPDOWN_CLASSW, WS_CHILD | WS_VISIBLE, 0, parent.Handle());
    ::SendMessageW(Handle(), UDM_SETRANGE32, static_cast<WPARAM>(least), greatest);
}

int TUpDown::Position() const {
    return static_cast<int>(::SendMessageW(Handle(), UDM_GETPOS32, 0, 0));
}

void TUpDown::SetPosition(int position) {
    ::SendMessageW(Handle(), UDM_SETPOS32, 0, position);
}

void TUpDown::Scrolled(WPARAM what) {
    if (LOWORD(what) == SB_THUMBPOSITION && OnClick)
        OnClick(this);
}

}  // namespace framework
