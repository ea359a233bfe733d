#pragma once

#include <QFont>
#include <QRect>

#include "form/form.h"

namespace karvel {

/// Turns dialog units into pixels for one font.
class QtDialogUnits {
 public:
  explicit QtDialogUnits(const QFont& font);

  [[nodiscard]] int horizontal(int units) const;
  [[nodiscard]] int vertical(int units) const;
  /// Controls whose edges share a coordinate share the pixel, too.
  [[nodiscard]] QRect rect(const Rect& units) const;

 private:
  double horizontalBase_;
  double verticalBase_;
};

}  // namespace karvel
