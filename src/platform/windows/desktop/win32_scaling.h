#pragma once

#include <windows.h>

namespace karvel {

/// What depends on the resolution of the monitor that a window is on. Where the system knows only
/// one resolution for all monitors, that one counts.

[[nodiscard]] UINT dpiOf(HWND window);

/// The system's font for messages, which also suits dialogs.
[[nodiscard]] LOGFONTW messageFont(UINT dpi);

/// A measure of GetSystemMetrics.
[[nodiscard]] int systemMetric(int index, UINT dpi);

/// Grows a client area to the window around it.
void addWindowFrame(RECT& area, DWORD style, DWORD extendedStyle, UINT dpi);

/// Tells the system that the dialog lays itself out when the resolution changes.
void keepDialogLayout(HWND dialog);

}  // namespace karvel
