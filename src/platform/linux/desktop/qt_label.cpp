#include "platform/linux/desktop/qt_label.h"

#include "platform/linux/desktop/qt_colours.h"
#include "platform/linux/desktop/qt_text.h"

namespace karvel {

QtLabel::QtLabel(Control& control, QWidget& parent) : QtControlWidget(control), label_(&parent) {
  label_.setTextFormat(Qt::PlainText);
  label_.setWordWrap(true);
  label_.setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void QtLabel::sync() {
  label_.setText(toQt(control().caption()));
  label_.setEnabled(control().enabled());
  offerWholeText();
}

void QtLabel::offerWholeText() {
  const bool fits = label_.heightForWidth(label_.width()) <= label_.height();
  label_.setToolTip(fits ? QString() : label_.text());
}

void QtLabel::applyLook(const QWidget& window) {
  if (control().has(ControlRow::kTitle)) makeTitle(window);
  if (control().has(ControlRow::kNote)) makeNote(window);
  offerWholeText();
}

void QtLabel::makeTitle(const QWidget& window) {
  QFont font = window.font();
  font.setBold(true);
  label_.setFont(font);
  QPalette palette = window.palette();
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    const QColor band = blended(palette.color(group, QPalette::Highlight),
                                palette.color(group, QPalette::Window), 15);
    palette.setColor(group, QPalette::Window, band);
  }
  label_.setPalette(palette);
  label_.setAutoFillBackground(true);
  label_.setIndent(label_.fontMetrics().averageCharWidth() / 2);
}

void QtLabel::makeNote(const QWidget& window) {
  QPalette palette = window.palette();
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    palette.setColor(group, QPalette::WindowText,
                     quieter(palette.color(group, QPalette::WindowText),
                             palette.color(group, QPalette::Window)));
  }
  label_.setPalette(palette);
}

}  // namespace karvel
