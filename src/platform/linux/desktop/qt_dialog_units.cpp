#include "platform/linux/desktop/qt_dialog_units.h"

#include <QFontMetricsF>
#include <cmath>

namespace karvel {

QtDialogUnits::QtDialogUnits(const QFont& font) {
  const QString letters = QStringLiteral("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ");
  const QFontMetricsF metrics(font);
  horizontalBase_ = metrics.horizontalAdvance(letters) / static_cast<double>(letters.size());
  verticalBase_ = metrics.height();
}

int QtDialogUnits::horizontal(int units) const {
  return static_cast<int>(std::lround(units * horizontalBase_ / 4));
}

int QtDialogUnits::vertical(int units) const {
  return static_cast<int>(std::lround(units * verticalBase_ / 8));
}

QRect QtDialogUnits::rect(const Rect& units) const {
  const QPoint topLeft(horizontal(units.x), vertical(units.y));
  const QPoint end(horizontal(units.x + units.width), vertical(units.y + units.height));
  return {topLeft, QSize(end.x() - topLeft.x(), end.y() - topLeft.y())};
}

}  // namespace karvel
