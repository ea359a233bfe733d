#pragma once

#include <windows.h>

#include "platform/windows/desktop/win32_gdi.h"

namespace karvel {

/// Fonts and colours of a form's window: the system's own, taken anew when they change.
class Win32Look {
 public:
  explicit Win32Look(UINT dpi);

  [[nodiscard]] HFONT font() const { return font_.get(); }
  [[nodiscard]] HFONT titleFont() const { return titleFont_.get(); }

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

}  // namespace karvel
