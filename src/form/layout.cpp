#include "form/layout.h"

#include <algorithm>
#include <cmath>

namespace karvel {
namespace {

/// Along one axis.
int firstEdge(int size, int aroundStart, int aroundSize, int usableStart, int usableSize) {
  const int centred = aroundStart + (aroundSize - size) / 2;
  return std::max(std::min(centred, usableStart + usableSize - size), usableStart);
}

}  // namespace

int DialogUnits::horizontal(int units) const {
  return static_cast<int>(std::lround(units * averageWidth_ / 4));
}

int DialogUnits::vertical(int units) const {
  return static_cast<int>(std::lround(units * lineHeight_ / 8));
}

PixelRect DialogUnits::rect(const Rect& units) const {
  const int left = horizontal(units.x);
  const int top = vertical(units.y);
  return {left, top, horizontal(units.x + units.width) - left,
          vertical(units.y + units.height) - top};
}

PixelPoint firstPlace(const PixelRect& window, const PixelRect& around, const PixelRect& usable) {
  return {firstEdge(window.width, around.left, around.width, usable.left, usable.width),
          firstEdge(window.height, around.top, around.height, usable.top, usable.height)};
}

}  // namespace karvel
