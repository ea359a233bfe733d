#pragma once

#include <QLineEdit>
#include <QValidator>

#include "form/text_entry.h"
#include "platform/linux/desktop/qt_control_widget.h"

namespace karvel {

/// A one-line text box.
class QtTextField final : public QtControlWidget {
 public:
  QtTextField(Control& control, const QtFormLink& link, QWidget& parent);
  QWidget& widget() override { return edit_; }
  void sync() override;

 private:
  /// Takes out of every edit what may not enter the field.
  class Filter final : public QValidator {
   public:
    explicit Filter(const ControlRow& row) : row_(row) {}
    /// The text that the program puts into the field next: it passes unfiltered.
    void expect(const QString& text) { known_ = text; }
    State validate(QString& input, int& cursor) const override;

   private:
    const ControlRow row_;
    mutable QString known_;  ///< the field's text before the edit that is being judged
  };

  /// Reports what a line edit has no signals for.
  class Edit final : public QLineEdit {
   public:
    Edit(QtTextField& field, QWidget& parent) : QLineEdit(&parent), field_(field) {}

   protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

   private:
    QtTextField& field_;
  };

  void select(std::size_t start, std::size_t length);

  TextBoxFocus focus_;
  Filter filter_;  // outlives the field that asks it
  Edit edit_;
};

}  // namespace karvel
