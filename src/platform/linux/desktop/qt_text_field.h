#pragma once

#include "platform/linux/desktop/qt_control_widget.h"
#include "platform/linux/desktop/qt_insertion_filter.h"
#include "platform/linux/desktop/qt_line_edit.h"

namespace karvel {

/// A one-line text box.
class QtTextField final : public QtControlWidget {
 public:
  QtTextField(Form& form, Control& control, QWidget& parent);
  QWidget& widget() override { return edit_; }
  void sync() override;

 private:
  void receiveFocus();
  void syncSelection();

  QtInsertionFilter filter_;  // outlives the field that asks it
  QtLineEdit edit_;
  bool selectionRequested_ = false;
  std::size_t selectionStart_ = 0;
  std::size_t selectionLength_ = 0;
};

}  // namespace karvel
