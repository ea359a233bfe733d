#include "platform/linux/desktop/qt_frame.h"

#include <QPainter>

#include "platform/linux/desktop/qt_colours.h"

namespace karvel {

QtFrame::QtFrame(Control& control, QWidget& parent)
    : QtControlWidget(control), border_(parent, control.row().kind == ControlKind::kLine) {
  border_.lower();
}

void QtFrame::Border::paintEvent(QPaintEvent*) {
  const QColor text = palette().color(QPalette::Active, QPalette::WindowText);
  const QColor back = palette().color(QPalette::Active, QPalette::Window);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing, !line_);
  painter.setPen(QPen(blended(text, back, 28), 1));
  if (line_) {
    painter.drawLine(0, height() / 2, width(), height() / 2);
  } else {
    painter.drawRoundedRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5), 3, 3);
  }
}

}  // namespace karvel
