#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

#include "form/layout.h"
#include "platform/desktop.h"

namespace karvel {

/// What forms are drawn with, as the system has it for the resolution of the monitor that a window
/// is on. Where the system knows only one resolution for all monitors, that one counts.

struct GdiDeleter {
  void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
struct IconDeleter {
  void operator()(HICON icon) const { DestroyIcon(icon); }
};

using Win32Font = std::unique_ptr<std::remove_pointer_t<HFONT>, GdiDeleter>;
using Win32Icon = std::unique_ptr<std::remove_pointer_t<HICON>, IconDeleter>;

/// A window's device context with an object selected into it, for as long as it lives.
class SelectedDc {
 public:
  SelectedDc(HWND window, HGDIOBJ object)
      : window_(window), dc_(GetDC(window)), previous_(SelectObject(dc_, object)) {}
  ~SelectedDc() {
    SelectObject(dc_, previous_);
    ReleaseDC(window_, dc_);
  }
  SelectedDc(const SelectedDc&) = delete;
  SelectedDc& operator=(const SelectedDc&) = delete;

  [[nodiscard]] HDC get() const { return dc_; }

 private:
  HWND window_;
  HDC dc_;
  HGDIOBJ previous_;
};

/// Fonts and colours of a form's window: the system's own, taken anew when they change.
class Win32Look {
 public:
  explicit Win32Look(UINT dpi);

  [[nodiscard]] HFONT font() const { return font_.get(); }
  [[nodiscard]] HFONT titleFont() const { return titleFont_.get(); }
  [[nodiscard]] DialogUnits dialogUnits(HWND window) const;

  [[nodiscard]] static COLORREF background() { return GetSysColor(COLOR_3DFACE); }
  [[nodiscard]] static COLORREF text() { return GetSysColor(COLOR_BTNTEXT); }
  [[nodiscard]] static COLORREF disabledText() { return GetSysColor(COLOR_GRAYTEXT); }
  /// Behind a section title.
  [[nodiscard]] static COLORREF titleBand();
  /// For explanations: it stands back and is still easy to read.
  [[nodiscard]] static COLORREF quietText();

 private:
  Win32Font font_;
  Win32Font titleFont_;
};

enum class IconSize : std::uint8_t { kSmall, kBig };

/// The images that are built into the executable.
[[nodiscard]] Win32Icon trayImage(TrayImage image, IconSize size, UINT dpi);
[[nodiscard]] Win32Icon windowImage(IconSize size, UINT dpi);

[[nodiscard]] UINT dpiOf(HWND window);

/// Grows a client area to the window around it.
void addWindowFrame(RECT& area, DWORD style, DWORD extendedStyle, UINT dpi);

/// Tells the system that the dialog lays itself out when the resolution changes.
void keepDialogLayout(HWND dialog);

}  // namespace karvel
