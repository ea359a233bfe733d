#include "platform/linux/desktop/qt_text_field.h"

#include <QFocusEvent>
#include <algorithm>

#include "platform/linux/desktop/qt_text.h"
#include "text/strings.h"

namespace karvel {
namespace {

/// In UTF-16 units, as is commonEnd(); neither ends within a character.
qsizetype commonStart(const QString& left, const QString& right) {
  const auto ends = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
  const qsizetype length = ends.first - left.begin();
  return length > 0 && left[length - 1].isHighSurrogate() ? length - 1 : length;
}

qsizetype commonEnd(const QString& left, const QString& right, qsizetype start) {
  qsizetype length = 0;
  const qsizetype limit = std::min(left.size(), right.size()) - start;
  while (length < limit && left[left.size() - 1 - length] == right[right.size() - 1 - length]) {
    ++length;
  }
  return length > 0 && left[left.size() - length].isLowSurrogate() ? length - 1 : length;
}

}  // namespace

QtTextField::QtTextField(Control& control, const QtFormLink& link, QWidget& parent)
    : QtControlWidget(control, link),
      focus_(control),
      filter_(control.row()),
      edit_(*this, parent) {
  if (control.has(ControlRow::kPassword)) edit_.setEchoMode(QLineEdit::Password);
  edit_.setValidator(&filter_);
  edit_.setAttribute(Qt::WA_InputMethodEnabled,
                     control.row().inputMethod == InputMethod::kHiragana);
  QObject::connect(&edit_, &QLineEdit::textEdited, [this](const QString& text) {
    tell([&text](Control& edited) { edited.setText(fromQt(text)); });
  });
}

void QtTextField::sync() {
  edit_.setEnabled(control().enabled());
  const QString wanted = toQt(control().text());
  if (edit_.text() != wanted) {
    filter_.expect(wanted);
    edit_.setText(wanted);
    edit_.setCursorPosition(0);
  }
  if (control().takeSelectionRequest()) {
    select(control().selectionStart(), control().selectionLength());
  }
}

void QtTextField::select(std::size_t start, std::size_t length) {
  const std::string text = fromQt(edit_.text());
  const std::string_view before = firstCharacters(text, start);
  const std::string_view selected =
      firstCharacters(std::string_view(text).substr(before.size()), length);
  edit_.setSelection(static_cast<int>(toQt(before).size()),
                     static_cast<int>(toQt(selected).size()));
}

QValidator::State QtTextField::Filter::validate(QString& input, int& cursor) const {
  if (input == known_) return Acceptable;
  const qsizetype start = commonStart(known_, input);
  const qsizetype end = commonEnd(known_, input, start);
  const QString before = input.first(start);
  const QString after = input.last(end);
  const QString inserted = input.sliced(start, input.size() - start - end);
  const std::size_t staying = characterCount(fromQt(before)) + characterCount(fromQt(after));
  const QString kept = toQt(acceptedInsertion(row_, fromQt(inserted), staying));
  if (kept.isEmpty() && !inserted.isEmpty()) return Invalid;
  if (kept != inserted) {
    input = before + kept + after;
    cursor = static_cast<int>(start + kept.size());
  }
  known_ = input;
  return Acceptable;
}

void QtTextField::Edit::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  const bool byClick = event->reason() == Qt::MouseFocusReason;
  field_.tell([&](Control&) { field_.focus_.arrive(byClick); });
}

void QtTextField::Edit::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  const Qt::FocusReason reason = event->reason();
  field_.focus_.leave(reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason);
}

void QtTextField::Edit::mouseReleaseEvent(QMouseEvent* event) {
  QLineEdit::mouseReleaseEvent(event);
  field_.tell([&](Control&) { field_.focus_.endClick(hasSelectedText()); });
}

}  // namespace karvel
