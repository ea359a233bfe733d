#pragma once

#include <windows.h>

#include "form/form.h"

namespace karvel {

/// Turns dialog units into pixels for one font.
class Win32DialogUnits {
 public:
  Win32DialogUnits(HWND window, HFONT font);

  [[nodiscard]] int horizontal(int units) const;
  [[nodiscard]] int vertical(int units) const;
  /// Controls whose edges share a coordinate share the pixel, too.
  [[nodiscard]] RECT rect(const Rect& units) const;

 private:
  double horizontalBase_;
  double verticalBase_;
};

}  // namespace karvel
