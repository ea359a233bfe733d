#include "platform/linux/desktop/qt_text_field.h"

#include "platform/linux/desktop/qt_text.h"

namespace karvel {

QtTextField::QtTextField(Form& form, Control& control, QWidget& parent)
    : QtControlWidget(control),
      filter_(
          control.row().maxLength,
          [&form, &control](char32_t character) { return form.acceptsKey(control, character); }),
      edit_(&parent) {
  if (control.has(ControlRow::kPassword)) edit_.setEchoMode(QLineEdit::Password);
  edit_.setValidator(&filter_);
  edit_.setAttribute(Qt::WA_InputMethodEnabled,
                     control.row().inputMethod == InputMethod::kHiragana);
  QObject::connect(&edit_, &QLineEdit::textEdited,
                   [&control](const QString& text) { control.setText(fromQt(text)); });
  edit_.onFocus = [this] { receiveFocus(); };
}

void QtTextField::sync() {
  edit_.setEnabled(control().enabled());
  const QString wanted = toQt(control().text());
  if (edit_.text() != wanted) {
    filter_.expect(wanted);
    edit_.setText(wanted);
    edit_.setCursorPosition(0);
  }
  syncSelection();
}

void QtTextField::receiveFocus() {
  selectionRequested_ = true;
  control().focus();
  selectionRequested_ = false;
}

void QtTextField::syncSelection() {
  // Other changes of the control must not disturb what the user has selected meanwhile.
  const bool same = control().selectionStart() == selectionStart_ &&
                    control().selectionLength() == selectionLength_;
  if (same && !selectionRequested_) return;
  selectionStart_ = control().selectionStart();
  selectionLength_ = control().selectionLength();
  const QString text = edit_.text();
  const qsizetype start = utf16Index(text, selectionStart_);
  const qsizetype length = utf16Index(text.sliced(start), selectionLength_);
  edit_.setSelection(static_cast<int>(start), static_cast<int>(length));
}

}  // namespace karvel
