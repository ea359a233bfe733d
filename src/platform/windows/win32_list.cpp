#include "platform/windows/win32_list.h"

#include "platform/windows/wide_text.h"

namespace karvel {

Win32List::Win32List(Control& control, HWND parent, WORD id)
    : Win32ControlWindow(control, createChild(L"LISTBOX",
                                              LBS_NOINTEGRALHEIGHT | LBS_USETABSTOPS | WS_VSCROLL |
                                                  tabStopOf(control),
                                              WS_EX_CLIENTEDGE, parent, id)) {
}

void Win32List::sync() {
  syncEnabled();
  std::vector<int> stops = control().tabStops();
  SendMessageW(handle(), LB_SETTABSTOPS, stops.size(), reinterpret_cast<LPARAM>(stops.data()));
  SendMessageW(handle(), WM_SETREDRAW, FALSE, 0);
  SendMessageW(handle(), LB_RESETCONTENT, 0, 0);
  for (const std::string& item : control().items()) {
    const std::wstring text = toWide(item);
    SendMessageW(handle(), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
  }
  SendMessageW(handle(), WM_SETREDRAW, TRUE, 0);
  InvalidateRect(handle(), nullptr, TRUE);
}

}  // namespace karvel
