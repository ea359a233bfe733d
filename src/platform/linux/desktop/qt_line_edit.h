#pragma once

#include <QLineEdit>
#include <functional>

namespace karvel {

/// A one-line field that tells when it receives the focus and keeps a selection made at that
/// moment, also when the focus came by a click into the text.
class QtLineEdit final : public QLineEdit {
 public:
  using QLineEdit::QLineEdit;

  /// Runs when the focus comes from another control of the window; not when the window itself
  /// comes back to the front.
  std::function<void()> onFocus;

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  bool keptFocus_ = false;  ///< while another window was in front or a menu was open
  bool focusedByClick_ = false;
  int selectionStart_ = -1;
  int selectionLength_ = 0;
};

}  // namespace karvel
