#pragma once

#include <QWidget>

#include "form/form.h"

namespace karvel {

/// The way from a window and its widgets back to the form. It is cut once, when the window is
/// released: events that are on their way, or that the window causes while it goes, end here.
class QtFormLink {
 public:
  explicit QtFormLink(Form& form) : form_(&form) {}
  QtFormLink(const QtFormLink&) = delete;
  QtFormLink& operator=(const QtFormLink&) = delete;

  void cut() { form_ = nullptr; }
  /// nullptr when it has been cut.
  [[nodiscard]] Form* form() const { return form_; }

 private:
  Form* form_;
};

/// The widget of one control: a user's action on it reaches the control by tell() alone, and sync()
/// carries the control's properties to it.
class QtControlWidget {
 public:
  QtControlWidget(Control& control, const QtFormLink& link) : control_(control), link_(link) {}
  virtual ~QtControlWidget() = default;
  QtControlWidget(const QtControlWidget&) = delete;
  QtControlWidget& operator=(const QtControlWidget&) = delete;

  /// Not to be used any more when the link has been cut.
  [[nodiscard]] Control& control() const { return control_; }
  [[nodiscard]] virtual QWidget& widget() = 0;
  virtual void sync() = 0;
  /// Called when the widget has its place, and when the window's font or colours have changed.
  virtual void applyLook(const QWidget&) {}

 protected:
  template <class Action>
  void tell(Action action) const {
    if (link_.form() != nullptr) action(control_);
  }

 private:
  Control& control_;
  const QtFormLink& link_;
};

}  // namespace karvel
