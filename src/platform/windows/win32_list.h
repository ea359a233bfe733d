#pragma once

#include "platform/windows/win32_control_window.h"

namespace karvel {

class Win32List final : public Win32ControlWindow {
 public:
  Win32List(Control& control, HWND parent, WORD id);
  void sync() override;
};

}  // namespace karvel
