#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "form/form.h"
#include "platform/linux/desktop/qt_control_widget.h"

class QButtonGroup;

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
  /// Hides the window and forgets the form.
  void detach();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void addControls();
  void chainTabOrder();
  void layOut();
  void applyStateOfWindow();
  void showInFront();
  void minimizeIfStillShown();
  void centre();
  void reportState();
  void keepFocusFor(QWidget& widget, const QWidget* focusedBefore);
  void previewKey(const QKeyEvent& event);
  void pressFocusedOr(ControlRow::Style fallback);
  [[nodiscard]] QtControlWidget* firstInTabOrder() const;

  Form* form_;
  std::unordered_map<std::string, std::unique_ptr<QButtonGroup>> optionGroups_;
  std::vector<std::unique_ptr<QtControlWidget>> widgets_;
  /// Had the focus until it was disabled, and receives it again with its enabling, unless the user
  /// has turned to another control meanwhile. (A command is disabled while it runs.)
  QPointer<QWidget> focusWaiting_;
  bool layingOut_ = false;
  bool discarding_ = false;
  bool painted_ = false;  ///< since it was last shown
};

}  // namespace karvel
