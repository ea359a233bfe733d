#pragma once

#include <memory>

#include "platform/windows/desktop/win32_control.h"

namespace karvel {

/// Makes the classes of the common controls known, in the version that the manifest names; to be
/// called before the first window with controls, and not earlier: at rest in the notification area
/// the program does without the library, which would take a good part of its memory.
void registerCommonControls();

/// Makes the window of a control as a child of the form's window, under the number `id`.
[[nodiscard]] std::unique_ptr<Win32Control> makeControl(const Form& form, Control& control,
                                                        HWND parent, WORD id);

}  // namespace karvel
