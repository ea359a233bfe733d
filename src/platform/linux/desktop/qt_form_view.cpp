#include "platform/linux/desktop/qt_form_view.h"

namespace karvel {

void QtFormView::DeleteLater::operator()(QtFormWindow* window) const {
  window->detach();
  window->deleteLater();
}

QtFormView::QtFormView(Form& form, QWidget* owner, Qt::WindowModality modality)
    : form_(form), owner_(owner), modality_(modality) {
  form_.setView(this);
  formChanged();
}

QtFormView::~QtFormView() {
  form_.setView(nullptr);
}

void QtFormView::formChanged() {
  if (!window_ && form_.visible()) {
    window_.reset(std::make_unique<QtFormWindow>(form_, owner_).release());
    window_->setWindowModality(modality_);
  }
  if (window_) window_->syncForm();
  if (form_.closed() && onClosed) onClosed();
}

void QtFormView::controlChanged(Control& control) {
  if (window_) window_->syncControl(control);
}

}  // namespace karvel
