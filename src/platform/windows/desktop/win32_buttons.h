#pragma once

#include "platform/windows/desktop/win32_control_window.h"

namespace karvel {

class Win32PushButton final : public Win32ControlWindow {
 public:
  Win32PushButton(Control& control, HWND parent, WORD id);
  void sync() override;
  void notify(WORD notification) override;
  void showDefault(bool isDefault) override;
};

/// One of the options of the same name, of which the keyboard reaches the selected one.
class Win32OptionButton final : public Win32ControlWindow {
 public:
  Win32OptionButton(const Form& form, Control& control, HWND parent, WORD id);
  void sync() override;
  void notify(WORD notification) override;

 private:
  [[nodiscard]] bool isTabStop() const;

  const Form& form_;
};

class Win32CheckBox final : public Win32ControlWindow {
 public:
  Win32CheckBox(Control& control, HWND parent, WORD id);
  void sync() override;
  void notify(WORD notification) override;
};

}  // namespace karvel
