#include "platform/windows/desktop/win32_control_window.h"

#include <cstdint>

#include "platform/windows/desktop/win32_buttons.h"
#include "platform/windows/desktop/win32_label.h"
#include "platform/windows/desktop/win32_look.h"
#include "platform/windows/desktop/win32_text_field.h"
#include "platform/windows/system/wide_text.h"

namespace karvel {
namespace {

class DecorationWindow final : public Win32ControlWindow {
 public:
  DecorationWindow(Control& control, HWND parent, WORD id)
      : Win32ControlWindow(control, createChild(L"STATIC", styleOf(control), 0, parent, id)) {}
  void sync() override { syncEnabled(); }

 private:
  static DWORD styleOf(const Control& control) {
    return control.row().kind == ControlKind::kLine ? SS_ETCHEDHORZ : SS_ETCHEDFRAME;
  }
};

}  // namespace

void Win32ControlWindow::notify(WORD) {
}

void Win32ControlWindow::draw(const DRAWITEMSTRUCT&) {
}

void Win32ControlWindow::showDefault(bool) {
}

void Win32ControlWindow::moveTo(const RECT& place) const {
  MoveWindow(handle_, static_cast<int>(place.left), static_cast<int>(place.top),
             static_cast<int>(place.right - place.left), static_cast<int>(place.bottom - place.top),
             TRUE);
}

void Win32ControlWindow::applyLook(const Win32Look& look) {
  SendMessageW(handle_, WM_SETFONT, reinterpret_cast<WPARAM>(look.font()), TRUE);
}

std::wstring Win32ControlWindow::toolTip() const {
  return toWide(control_.row().toolTip);
}

void Win32ControlWindow::syncEnabled() const {
  EnableWindow(handle_, control_.enabled() ? TRUE : FALSE);
}

std::unique_ptr<Win32ControlWindow> makeControlWindow(Form& form, Control& control, HWND parent,
                                                      WORD id) {
  switch (control.row().kind) {
    case ControlKind::kLabel:
      return std::make_unique<Win32Label>(control, parent, id);
    case ControlKind::kTextBox:
      return std::make_unique<Win32TextField>(control, parent, id);
    case ControlKind::kButton:
      return std::make_unique<Win32PushButton>(control, parent, id);
    case ControlKind::kOptionButton:
      return std::make_unique<Win32OptionButton>(form, control, parent, id);
    case ControlKind::kCheckBox:
      return std::make_unique<Win32CheckBox>(control, parent, id);
    case ControlKind::kListBox:
    case ControlKind::kFrame:
    case ControlKind::kLine:
      break;
  }
  return std::make_unique<DecorationWindow>(control, parent, id);
}

HWND createChild(const wchar_t* className, DWORD style, DWORD extendedStyle, HWND parent, WORD id) {
  return CreateWindowExW(extendedStyle, className, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0,
                         parent, reinterpret_cast<HMENU>(static_cast<std::uintptr_t>(id)),
                         GetModuleHandleW(nullptr), nullptr);
}

DWORD tabStopOf(const Control& control) {
  return control.row().tabOrder == ControlRow::kNoTab ? 0 : WS_TABSTOP;
}

}  // namespace karvel
