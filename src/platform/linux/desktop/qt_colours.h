#pragma once

#include <QColor>

namespace karvel {

/// `percent` of the front colour over the colour behind.
inline QColor blended(const QColor& front, const QColor& behind, int percent) {
  const auto mix = [percent](int above, int below) {
    return (above * percent + below * (100 - percent)) / 100;
  };
  return {mix(front.red(), behind.red()), mix(front.green(), behind.green()),
          mix(front.blue(), behind.blue())};
}

/// A text colour that stands back and is still easy to read on its background.
inline QColor quieter(const QColor& text, const QColor& background) {
  return blended(text, background, 70);
}

}  // namespace karvel
