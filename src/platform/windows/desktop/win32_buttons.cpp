#include "platform/windows/desktop/win32_buttons.h"

#include <algorithm>

#include "platform/windows/desktop/win32_control_order.h"
#include "platform/windows/desktop/win32_text.h"

namespace karvel {
namespace {

HWND createButton(const Control& control, DWORD style, HWND parent, WORD id) {
  return createChild(L"BUTTON", style | BS_NOTIFY | tabStopOf(control), 0, parent, id);
}

void showCaption(const Win32ControlWindow& button) {
  const std::wstring caption = literalCaption(button.control().caption());
  if (windowText(button.handle()) != caption) SetWindowTextW(button.handle(), caption.c_str());
}

void showMark(HWND button, bool marked) {
  SendMessageW(button, BM_SETCHECK, marked ? BST_CHECKED : BST_UNCHECKED, 0);
}

}  // namespace

Win32PushButton::Win32PushButton(Control& control, HWND parent, WORD id)
    : Win32ControlWindow(
          control,
          createButton(control,
                       control.has(ControlRow::kDefaultButton) ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON,
                       parent, id)) {
}

void Win32PushButton::sync() {
  showCaption(*this);
  syncEnabled();
}

void Win32PushButton::showDefault(bool isDefault) {
  const LONG_PTR wanted = isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
  if ((GetWindowLongPtrW(handle(), GWL_STYLE) & BS_TYPEMASK) == wanted) return;
  SendMessageW(handle(), BM_SETSTYLE, static_cast<WPARAM>(wanted), TRUE);
}

void Win32PushButton::notify(WORD notification) {
  if (notification == BN_CLICKED) control().click();
}

Win32OptionButton::Win32OptionButton(const Form& form, Control& control, HWND parent, WORD id)
    : Win32ControlWindow(control, createButton(control, BS_RADIOBUTTON, parent, id)), form_(form) {
}

void Win32OptionButton::sync() {
  showCaption(*this);
  syncEnabled();
  showMark(handle(), control().selected());
  const LONG_PTR style = GetWindowLongPtrW(handle(), GWL_STYLE);
  const LONG_PTR wanted = isTabStop() ? style | WS_TABSTOP : style & ~LONG_PTR{WS_TABSTOP};
  if (wanted != style) SetWindowLongPtrW(handle(), GWL_STYLE, wanted);
}

bool Win32OptionButton::isTabStop() const {
  if (tabStopOf(control()) == 0) return false;
  if (control().selected()) return true;
  return std::none_of(form_.controls().begin(), form_.controls().end(), [&](const auto& other) {
    return other->selected() && excludeEachOther(*other, control());
  });
}

void Win32OptionButton::notify(WORD notification) {
  // An option that receives the focus says that it is clicked, too.
  if (notification == BN_CLICKED && !control().selected()) control().select();
}

Win32CheckBox::Win32CheckBox(Control& control, HWND parent, WORD id)
    : Win32ControlWindow(control, createButton(control, BS_AUTOCHECKBOX, parent, id)) {
}

void Win32CheckBox::sync() {
  showCaption(*this);
  syncEnabled();
  showMark(handle(), control().value() != 0);
}

void Win32CheckBox::notify(WORD notification) {
  if (notification != BN_CLICKED) return;
  control().setValue(SendMessageW(handle(), BM_GETCHECK, 0, 0) == BST_CHECKED ? 1 : 0);
}

}  // namespace karvel
