#pragma once

#include <QWidget>
#include <functional>
#include <memory>

#include "form/form.h"
#include "platform/linux/desktop/qt_form_window.h"

namespace karvel {

/// Binds a form to its window. The window is made when the form is first shown, so a program that
/// stays in the notification area has none.
class QtFormView final : public FormView {
 public:
  /// `owner` is the window that a dialog stands above, or nullptr. A modal form blocks the other
  /// windows while it is shown.
  QtFormView(Form& form, QWidget* owner, Qt::WindowModality modality);
  ~QtFormView() override;
  QtFormView(const QtFormView&) = delete;
  QtFormView& operator=(const QtFormView&) = delete;

  void formChanged() override;
  void controlChanged(Control& control) override;

  [[nodiscard]] const Form& form() const { return form_; }
  /// nullptr until the form has been shown.
  [[nodiscard]] QtFormWindow* window() const { return window_.get(); }

  /// Runs when the form has been marked closed.
  std::function<void()> onClosed;

 private:
  /// A window may be released by the handler of an event that it still has to finish.
  struct DeleteLater {
    void operator()(QtFormWindow* window) const;
  };

  Form& form_;
  QWidget* owner_;
  Qt::WindowModality modality_;
  std::unique_ptr<QtFormWindow, DeleteLater> window_;
};

}  // namespace karvel
