#include "platform/windows/desktop/win32_control.h"

#include <cstdint>

#include "platform/windows/system/wide_text.h"

namespace karvel {

void Win32Control::sync() {
  EnableWindow(handle_, control_.enabled() ? TRUE : FALSE);
}

void Win32Control::applyLook(const Win32Look& look) {
  SendMessageW(handle_, WM_SETFONT, reinterpret_cast<WPARAM>(look.font()), TRUE);
}

void Win32Control::moveTo(const PixelRect& place) const {
  MoveWindow(handle_, place.left, place.top, place.width, place.height, TRUE);
}

std::wstring Win32Control::toolTip() const {
  return toWide(control_.row().toolTip);
}

HWND createChild(const Control& control, const wchar_t* className, DWORD style, DWORD extendedStyle,
                 HWND parent, WORD id) {
  const DWORD tabStop = control.row().tabOrder == ControlRow::kNoTab ? 0 : WS_TABSTOP;
  return CreateWindowExW(extendedStyle, className, L"", WS_CHILD | WS_VISIBLE | tabStop | style, 0,
                         0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<std::uintptr_t>(id)),
                         GetModuleHandleW(nullptr), nullptr);
}

std::wstring windowText(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::wstring literalCaption(const std::string& caption) {
  std::wstring doubled;
  for (const wchar_t unit : toWide(caption)) {
    if (unit == L'&') doubled.push_back(unit);
    doubled.push_back(unit);
  }
  return doubled;
}

}  // namespace karvel
