#pragma once

#include "platform/desktop.h"
#include "platform/windows/desktop/win32_gdi.h"

namespace karvel {

/// The images that are built into the executable, drawn for a size in pixels.
[[nodiscard]] Win32Icon trayImage(TrayImage image, int size);
[[nodiscard]] Win32Icon windowImage(int size);

}  // namespace karvel
