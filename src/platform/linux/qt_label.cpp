#include "platform/linux/qt_label.h"

#include <QPainter>

#include "platform/linux/qt_text.h"

namespace karvel {
namespace {

/// Between text and background, near enough to the text to stay readable.
QColor noteColor(const QPalette& palette, QPalette::ColorGroup group) {
  const QColor text = palette.color(group, QPalette::WindowText);
  const QColor back = palette.color(group, QPalette::Window);
  const auto blend = [](int front, int behind) { return (front * 70 + behind * 30) / 100; };
  return {blend(text.red(), back.red()), blend(text.green(), back.green()),
          blend(text.blue(), back.blue())};
}

}  // namespace

QtLabel::RuledLabel::RuledLabel(QWidget& parent, bool ruled) : QLabel(&parent), ruled_(ruled) {
}

void QtLabel::RuledLabel::paintEvent(QPaintEvent* event) {
  QLabel::paintEvent(event);
  if (!ruled_) return;
  const int start = fontMetrics().horizontalAdvance(text()) + fontMetrics().averageCharWidth();
  const int middle = height() / 2;
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Mid));
  if (start < width()) painter.drawLine(start, middle, width() - 1, middle);
}

QtLabel::QtLabel(Control& control, QWidget& parent)
    : QtControlWidget(control), label_(parent, control.has(ControlRow::kTitle)) {
  label_.setTextFormat(Qt::PlainText);
  label_.setWordWrap(true);
  label_.setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  // Keeps a title's line or a note's block from being grown by the style.
  label_.setMargin(0);
}

void QtLabel::sync() {
  label_.setText(toQt(control().caption()));
  label_.setEnabled(control().enabled());
}

void QtLabel::applyLook(const QWidget& window) {
  if (control().has(ControlRow::kTitle)) {
    QFont font = window.font();
    font.setBold(true);
    label_.setFont(font);
  }
  if (!control().has(ControlRow::kNote)) return;
  QPalette palette = window.palette();
  for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
    palette.setColor(group, QPalette::WindowText, noteColor(window.palette(), group));
  }
  label_.setPalette(palette);
}

}  // namespace karvel
