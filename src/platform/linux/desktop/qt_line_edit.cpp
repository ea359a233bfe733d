#include "platform/linux/desktop/qt_line_edit.h"

#include <QFocusEvent>
#include <QMouseEvent>
#include <utility>

namespace karvel {

void QtLineEdit::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  if (std::exchange(keptFocus_, false)) return;
  if (onFocus) onFocus();
  focusedByClick_ = event->reason() == Qt::MouseFocusReason;
  selectionStart_ = selectionStart();
  selectionLength_ = static_cast<int>(selectedText().size());
}

void QtLineEdit::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  const Qt::FocusReason reason = event->reason();
  keptFocus_ = reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
}

void QtLineEdit::mouseReleaseEvent(QMouseEvent* event) {
  QLineEdit::mouseReleaseEvent(event);
  const bool first = std::exchange(focusedByClick_, false);
  if (first && !hasSelectedText() && selectionStart_ >= 0) {
    setSelection(selectionStart_, selectionLength_);
  }
}

}  // namespace karvel
