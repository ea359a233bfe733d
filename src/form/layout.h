#pragma once

#include "form/form.h"

namespace karvel {

/// From the measures of a form's table to a place on the screen.

struct PixelPoint {
  int x = 0;
  int y = 0;
  bool operator==(const PixelPoint&) const = default;
};

struct PixelRect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  bool operator==(const PixelRect&) const = default;
};

/// Turns dialog units into pixels for one font.
class DialogUnits {
 public:
  /// The average width of the letters a to z and A to Z, and the height of a line, in pixels.
  DialogUnits(double averageWidth, double lineHeight)
      : averageWidth_(averageWidth), lineHeight_(lineHeight) {}

  [[nodiscard]] int horizontal(int units) const;
  [[nodiscard]] int vertical(int units) const;
  /// Controls whose edges share a coordinate share the pixel, too.
  [[nodiscard]] PixelRect rect(const Rect& units) const;

 private:
  double averageWidth_;
  double lineHeight_;
};

/// Where the upper left corner of a window goes that is shown for the first time: in the middle of
/// `around` (its owner, or the screen), but within the screen's usable area as far as it fits in.
/// Of a window that is larger than the screen the title bar and the left edge stay in reach.
/// `window` is its size, frame included.
[[nodiscard]] PixelPoint firstPlace(const PixelRect& window, const PixelRect& around,
                                    const PixelRect& usable);

}  // namespace karvel
