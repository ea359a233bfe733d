#pragma once

#include <QFont>
#include <QWidget>
#include <memory>

#include "form/form.h"

class QButtonGroup;

namespace karvel {

class QtDialogUnits;

/// The widget of one control: a user's action on it reaches the control, and sync() carries the
/// control's properties to it.
class QtControlWidget {
 public:
  explicit QtControlWidget(Control& control) : control_(control) {}
  virtual ~QtControlWidget() = default;
  QtControlWidget(const QtControlWidget&) = delete;
  QtControlWidget& operator=(const QtControlWidget&) = delete;

  [[nodiscard]] Control& control() const { return control_; }
  [[nodiscard]] virtual QWidget& widget() = 0;
  virtual void sync() = 0;
  /// Called when the widget has its place, and when the window's font or colours have changed.
  virtual void applyLook(const QWidget& window);
  /// The keyboard's way to press it; a control that cannot be pressed does nothing.
  void press() const { control_.click(); }

 private:
  Control& control_;
};

/// `group` joins the option buttons of one name; it is unused for other kinds.
std::unique_ptr<QtControlWidget> makeQtControlWidget(Form& form, Control& control, QWidget& parent,
                                                     QButtonGroup& group);

}  // namespace karvel
