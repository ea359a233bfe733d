#include "platform/windows/desktop/win32_tool_tips.h"

#include <commctrl.h>

#include <cstdint>

namespace karvel {

Win32ToolTips::Win32ToolTips(HWND window)
    : window_(window),
      tips_(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX,
                            CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, window,
                            nullptr, GetModuleHandleW(nullptr), nullptr)) {
  // With a width limit a long text is shown in several lines.
  constexpr LPARAM kWidth = 480;
  SendMessageW(tips_, TTM_SETMAXTIPWIDTH, 0, kWidth);
}

void Win32ToolTips::set(HWND child, const std::wstring& text) const {
  std::wstring shown = text;
  // Of a disabled child the mouse tells its parent, so each child has a tool for both cases.
  TTTOOLINFOW onChild{};
  onChild.cbSize = sizeof onChild;
  onChild.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  onChild.hwnd = window_;
  onChild.uId = reinterpret_cast<std::uintptr_t>(child);
  onChild.lpszText = shown.data();

  TTTOOLINFOW onParent = onChild;
  onParent.uFlags = TTF_SUBCLASS;
  onParent.uId = static_cast<std::uintptr_t>(GetDlgCtrlID(child));
  GetWindowRect(child, &onParent.rect);
  MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&onParent.rect), 2);

  for (TTTOOLINFOW* tool : {&onChild, &onParent}) {
    SendMessageW(tips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(tool));
    if (!text.empty()) SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(tool));
  }
}

}  // namespace karvel
