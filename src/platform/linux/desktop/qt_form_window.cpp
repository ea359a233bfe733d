#include "platform/linux/desktop/qt_form_window.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <string_view>

#include "platform/linux/desktop/qt_dialog_units.h"
#include "platform/linux/desktop/qt_text.h"

namespace karvel {
namespace {

Qt::WindowFlags windowFlagsOf(const Form& form, bool owned) {
  Qt::WindowFlags flags = Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowCloseButtonHint;
  flags |= owned ? Qt::Dialog : Qt::Window;
  if (form.table().canMinimize) flags |= Qt::WindowMinimizeButtonHint;
  if (form.topmost()) flags |= Qt::WindowStaysOnTopHint;
  return flags;
}

struct ModifierKey {
  Qt::Key key;
  Qt::KeyboardModifier modifier;
  int mask;
};

constexpr ModifierKey kModifierKeys[] = {{Qt::Key_Shift, Qt::ShiftModifier, 1},
                                         {Qt::Key_Control, Qt::ControlModifier, 2},
                                         {Qt::Key_Alt, Qt::AltModifier, 4}};

/// The modifiers as they are after the event. What Qt reports for the modifier keys themselves
/// differs by platform; press and release of the key are certain.
int shiftMask(const QKeyEvent& event) {
  const Qt::KeyboardModifiers reported = event.QInputEvent::modifiers();
  int mask = 0;
  for (const ModifierKey& known : kModifierKeys) {
    const bool held = event.key() == known.key ? event.type() == QEvent::KeyPress
                                               : reported.testFlag(known.modifier);
    if (held) mask += known.mask;
  }
  return mask;
}

bool isInput(const QEvent& event) {
  switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
      return true;
    default:
      return false;
  }
}

/// Enter or Escape, sent once more because the key is held down.
bool isRepeatedAnswer(const QKeyEvent& event) {
  const int key = event.key();
  return event.isAutoRepeat() &&
         (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape);
}

}  // namespace

QtFormWindow::QtFormWindow(Form& form, QWidget* owner)
    : QWidget(owner, windowFlagsOf(form, owner != nullptr)), form_(&form) {
  setObjectName(QString::fromUtf8(form.table().name));
  installEventFilter(this);
  addControls();
  chainTabOrder();
  layOut();
}

QtFormWindow::~QtFormWindow() = default;

void QtFormWindow::addControls() {
  for (const auto& control : form_->controls()) {
    if (control->has(ControlRow::kHidden)) continue;
    const ControlRow& row = control->row();
    auto& group = optionGroups_[row.name];
    if (!group) group = std::make_unique<QButtonGroup>();
    widgets_.push_back(makeQtControlWidget(*form_, *control, *this, *group));

    QWidget& widget = widgets_.back()->widget();
    widget.setObjectName(QString::fromUtf8(row.name) + (row.index == ControlRow::kNoIndex
                                                            ? QString()
                                                            : QString::number(row.index)));
    widget.setToolTip(QString::fromUtf8(row.toolTip));
    const std::string_view spoken = row.accessibleName;
    widget.setAccessibleName(QString::fromUtf8(spoken.empty() ? row.caption : row.accessibleName));
    widget.installEventFilter(this);
    widgets_.back()->sync();
  }
}

void QtFormWindow::chainTabOrder() {
  std::vector<QtControlWidget*> chain;
  for (const auto& widget : widgets_) {
    if (widget->control().row().tabOrder == ControlRow::kNoTab) {
      widget->widget().setFocusPolicy(Qt::NoFocus);
    } else {
      chain.push_back(widget.get());
    }
  }
  std::sort(chain.begin(), chain.end(), [](const auto* left, const auto* right) {
    return left->control().row().tabOrder < right->control().row().tabOrder;
  });
  for (std::size_t i = 1; i < chain.size(); ++i) {
    setTabOrder(&chain[i - 1]->widget(), &chain[i]->widget());
  }
}

void QtFormWindow::layOut() {
  layingOut_ = true;
  const QtDialogUnits units(font());
  const FormTable& table = form_->table();
  setFixedSize(units.horizontal(table.width), units.vertical(table.height));
  for (const auto& widget : widgets_) {
    widget->widget().setGeometry(units.rect(widget->control().row().rect));
    widget->applyLook(*this);
  }
  layingOut_ = false;
}

void QtFormWindow::syncForm() {
  setWindowTitle(literalTitle(form_->caption()));
  if (!form_->visible()) {
    hide();
    return;
  }
  const bool onTop = windowFlags().testFlag(Qt::WindowStaysOnTopHint);
  if (onTop != form_->topmost()) setWindowFlag(Qt::WindowStaysOnTopHint, form_->topmost());
  applyStateOfWindow();
}

void QtFormWindow::applyStateOfWindow() {
  const bool minimized = form_->windowState() == WindowState::kMinimized;
  if (minimized) {
    // Later, and only if the form does not hide its window now that it is minimised: the window
    // manager's word on it would arrive when the window is shown again.
    QTimer::singleShot(0, this, [this] { minimizeIfStillShown(); });
  } else if (!isVisible() || isMinimized()) {
    showInFront();
  }
}

void QtFormWindow::minimizeIfStillShown() {
  if (form_ == nullptr || !form_->visible()) return;
  if (form_->windowState() == WindowState::kMinimized) showMinimized();
}

void QtFormWindow::showInFront() {
  if (!isVisible()) centre();
  painted_ = painted_ && isVisible() && !isMinimized();
  showNormal();
  raise();
  activateWindow();
  if (focusWidget() != nullptr) return;
  if (QtControlWidget* first = firstInTabOrder()) first->widget().setFocus();
}

void QtFormWindow::centre() {
  const QWidget* owner = parentWidget();
  const QRect around = owner != nullptr ? owner->frameGeometry() : screen()->availableGeometry();
  move(around.center() - rect().center());
}

void QtFormWindow::syncControl(Control& control) {
  for (const auto& widget : widgets_) {
    if (&widget->control() != &control) continue;
    const QWidget* focused = focusWidget();
    widget->sync();
    keepFocusFor(widget->widget(), focused);
    // A run keeps the message loop waiting; what it reports is seen all the same.
    if (widget->widget().isVisible()) widget->widget().repaint();
    return;
  }
}

void QtFormWindow::keepFocusFor(QWidget& widget, const QWidget* focusedBefore) {
  if (widget.isEnabled()) {
    if (&widget != focusWaiting_) return;
    focusWaiting_.clear();
    widget.setFocus();
  } else if (&widget == focusedBefore && focusWaiting_.isNull()) {
    focusWaiting_ = &widget;
  }
}

void QtFormWindow::discardInput() {
  const QPointer<QtFormWindow> self = this;
  discarding_ = true;
  QCoreApplication::processEvents();
  if (self) discarding_ = false;
}

void QtFormWindow::detach() {
  form_ = nullptr;
  for (const auto& widget : widgets_) {
    widget->widget().removeEventFilter(this);
    widget->widget().disconnect();
  }
  hide();
}

void QtFormWindow::closeEvent(QCloseEvent* event) {
  // The form decides: it hides the window when it goes.
  event->ignore();
  if (form_ != nullptr) form_->close();
}

void QtFormWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (form_ == nullptr || layingOut_) return;
  if (event->type() == QEvent::WindowStateChange) reportState();
  const bool left = event->type() == QEvent::ActivationChange && !isActiveWindow();
  if (left) form_->keyEvent(0);  // a release would go elsewhere
  if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange) layOut();
}

void QtFormWindow::paintEvent(QPaintEvent* event) {
  painted_ = true;
  QWidget::paintEvent(event);
}

void QtFormWindow::reportState() {
  if (!form_->visible() || !isVisible()) return;
  // Nobody minimises a window that is not on the screen yet: that is late news from before. And
  // whoever has opened a dialog above it must answer that one first.
  const QWidget* const dialog = QApplication::activeModalWidget();
  const bool blocked = dialog != nullptr && dialog != this;
  if (isMinimized() && (!painted_ || blocked)) return;
  form_->setWindowState(isMinimized() ? WindowState::kMinimized : WindowState::kNormal);
}

void QtFormWindow::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      pressFocusedOr(ControlRow::kDefaultButton);
      return;
    case Qt::Key_Escape:
      pressFocusedOr(ControlRow::kCancelButton);
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

bool QtFormWindow::eventFilter(QObject* watched, QEvent* event) {
  const bool key = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
  // A key that a control leaves alone is sent to the window next: it is one event all the same.
  if (key && watched == focusWidget()) previewKey(static_cast<const QKeyEvent&>(*event));
  if (discarding_ && isInput(*event)) return true;
  const bool byUser =
      event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress;
  if (byUser) focusWaiting_.clear();
  // One that is held down must not press a button again, nor the next window's one.
  if (key && isRepeatedAnswer(static_cast<const QKeyEvent&>(*event))) return true;
  return QWidget::eventFilter(watched, event);
}

void QtFormWindow::previewKey(const QKeyEvent& event) {
  if (form_ != nullptr) form_->keyEvent(shiftMask(event));
}

void QtFormWindow::pressFocusedOr(ControlRow::Style fallback) {
  const auto wanted = [&](const auto& widget) {
    if (fallback == ControlRow::kDefaultButton && &widget->widget() == focusWidget()) {
      return widget->control().row().kind == ControlKind::kButton;
    }
    return false;
  };
  auto found = std::find_if(widgets_.begin(), widgets_.end(), wanted);
  if (found == widgets_.end()) {
    found = std::find_if(widgets_.begin(), widgets_.end(),
                         [&](const auto& widget) { return widget->control().has(fallback); });
  }
  if (found != widgets_.end()) (*found)->press();
}

QtControlWidget* QtFormWindow::firstInTabOrder() const {
  QtControlWidget* first = nullptr;
  for (const auto& widget : widgets_) {
    const int order = widget->control().row().tabOrder;
    const bool reachable = (widget->widget().focusPolicy() & Qt::TabFocus) != 0;
    if (!reachable || !widget->widget().isEnabled()) continue;
    if (first == nullptr || order < first->control().row().tabOrder) first = widget.get();
  }
  return first;
}

}  // namespace karvel
