#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "form/keyboard.h"
#include "platform/linux/desktop/qt_control_widget.h"

namespace karvel {

/// The window of a form, built from its table. It is hidden until syncForm() finds the form
/// visible. A hidden control has no widget: it holds values and is never seen. The form must live
/// until detach().
class QtFormWindow final : public QWidget {
 public:
  /// `owner` is the window that a dialog stands above, or nullptr.
  QtFormWindow(Form& form, QWidget* owner);
  ~QtFormWindow() override;

  /// Takes over the form's caption, visibility, window state and topmost.
  void syncForm();
  void syncControl(Control& control);
  /// Processes what has happened meanwhile, with clicks and keys left out.
  void discardInput();
  /// Hides the window and cuts it off from the form.
  void detach();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void addControls();
  void layOut();
  void applyStateOfWindow();
  void showInFront();
  void hideAndKeepPlace();
  void minimizeIfStillShown();
  [[nodiscard]] QPoint firstPlaceOnScreen() const;
  void reportState();
  [[nodiscard]] bool answersKey(const QKeyEvent& event);
  [[nodiscard]] bool movesWithinOptions(const QKeyEvent& event);
  void giveFocus(const Control& control) const;
  [[nodiscard]] Control* focusedControl() const;

  QtFormLink link_;
  std::vector<std::unique_ptr<QtControlWidget>> widgets_;
  FocusKeeper focusKeeper_;
  std::optional<QPoint> place_;  ///< where the window was before it was hidden
  bool layingOut_ = false;
  bool discarding_ = false;
  bool painted_ = false;  ///< since it was last shown
};

/// Binds a form to its window, which is made when the form is first shown: a program that stays in
/// the notification area has none.
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
