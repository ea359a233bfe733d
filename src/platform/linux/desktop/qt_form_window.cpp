#include "platform/linux/desktop/qt_form_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <string_view>
#include <utility>

#include "form/layout.h"
#include "platform/linux/desktop/qt_controls.h"
#include "platform/linux/desktop/qt_look.h"
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

QString objectNameOf(const ControlRow& row) {
  return QString::fromUtf8(row.name) +
         (row.index == ControlRow::kNoIndex ? QString() : QString::number(row.index));
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

AnswerKey answerKeyOf(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return AnswerKey::kEnter;
    case Qt::Key_Escape:
      return AnswerKey::kEscape;
    default:
      return AnswerKey::kNone;
  }
}

int arrowStepOf(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
      return -1;
    case Qt::Key_Right:
    case Qt::Key_Down:
      return 1;
    default:
      return 0;
  }
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

void syncFocusPolicy(const Form& form, QtControlWidget& widget) {
  Qt::FocusPolicy policy = Qt::NoFocus;
  if (widget.control().row().tabOrder != ControlRow::kNoTab) {
    policy = isTabStop(form, widget.control()) ? Qt::StrongFocus : Qt::ClickFocus;
  }
  widget.widget().setFocusPolicy(policy);
}

PixelRect toPixels(const QRect& rect) {
  return {rect.left(), rect.top(), rect.width(), rect.height()};
}

}  // namespace

QtFormWindow::QtFormWindow(Form& form, QWidget* owner)
    : QWidget(owner, windowFlagsOf(form, owner != nullptr)), link_(form), focusKeeper_(form) {
  setObjectName(QString::fromUtf8(form.table().name));
  installEventFilter(this);
  addControls();
  layOut();
}

QtFormWindow::~QtFormWindow() = default;

/// Qt moves the focus in the order in which the widgets are made.
void QtFormWindow::addControls() {
  for (Control* control : stackingOrder(*link_.form())) {
    const ControlRow& row = control->row();
    widgets_.push_back(makeQtControlWidget(*control, link_, *this));

    QWidget& widget = widgets_.back()->widget();
    widget.setObjectName(objectNameOf(row));
    widget.setToolTip(QString::fromUtf8(row.toolTip));
    const std::string_view spoken = row.accessibleName;
    widget.setAccessibleName(QString::fromUtf8(spoken.empty() ? row.caption : row.accessibleName));
    widget.installEventFilter(this);
    widgets_.back()->sync();
    syncFocusPolicy(*link_.form(), *widgets_.back());
  }
}

void QtFormWindow::layOut() {
  layingOut_ = true;
  const DialogUnits units = qtDialogUnits(font());
  const FormTable& table = link_.form()->table();
  setFixedSize(units.horizontal(table.width), units.vertical(table.height));
  for (const auto& widget : widgets_) {
    const PixelRect place = units.rect(widget->control().row().rect);
    widget->widget().setGeometry(place.left, place.top, place.width, place.height);
    widget->applyLook(*this);
  }
  layingOut_ = false;
}

void QtFormWindow::syncForm() {
  const Form& form = *link_.form();
  setWindowTitle(literalTitle(form.caption()));
  if (!form.visible()) {
    hideAndKeepPlace();
    return;
  }
  const bool onTop = windowFlags().testFlag(Qt::WindowStaysOnTopHint);
  if (onTop != form.topmost()) setWindowFlag(Qt::WindowStaysOnTopHint, form.topmost());
  applyStateOfWindow();
}

void QtFormWindow::applyStateOfWindow() {
  if (link_.form()->windowState() == WindowState::kMinimized) {
    // Later, and only if the form does not hide its window now that it is minimised: the window
    // manager's word on it would arrive when the window is shown again.
    QTimer::singleShot(0, this, [this] { minimizeIfStillShown(); });
  } else if (!isVisible() || isMinimized()) {
    showInFront();
  }
}

void QtFormWindow::minimizeIfStillShown() {
  const Form* form = link_.form();
  if (form == nullptr || !form->visible()) return;
  if (form->windowState() == WindowState::kMinimized) showMinimized();
}

void QtFormWindow::showInFront() {
  if (!isVisible()) move(place_ ? *place_ : firstPlaceOnScreen());
  painted_ = painted_ && isVisible() && !isMinimized();
  showNormal();
  raise();
  activateWindow();
  if (focusWidget() != nullptr) return;
  if (const Control* first = nextTabStop(*link_.form(), nullptr)) giveFocus(*first);
}

void QtFormWindow::hideAndKeepPlace() {
  if (isVisible() && painted_) place_ = pos();
  hide();
}

QPoint QtFormWindow::firstPlaceOnScreen() const {
  const QWidget* owner = parentWidget();
  const QRect usable = (owner != nullptr ? owner : this)->screen()->availableGeometry();
  const QRect around = owner != nullptr ? owner->frameGeometry() : usable;
  const PixelPoint place = firstPlace(toPixels(rect()), toPixels(around), toPixels(usable));
  return {place.x, place.y};
}

void QtFormWindow::syncControl(Control& control) {
  const Control* focused = focusedControl();
  for (const auto& widget : widgets_) {
    const bool changed = &widget->control() == &control;
    // Where the keyboard enters a group depends on all of its options.
    if (!changed && !excludeEachOther(widget->control(), control)) continue;
    widget->sync();
    syncFocusPolicy(*link_.form(), *widget);
    // A run keeps the message loop waiting; what it reports is seen all the same.
    if (changed && widget->widget().isVisible()) widget->widget().repaint();
  }
  if (const Control* next = focusKeeper_.afterChange(control, focused)) giveFocus(*next);
}

void QtFormWindow::discardInput() {
  const QPointer<QtFormWindow> self = this;
  discarding_ = true;
  QCoreApplication::processEvents();
  if (self) discarding_ = false;
}

void QtFormWindow::detach() {
  link_.cut();
  hide();
}

void QtFormWindow::closeEvent(QCloseEvent* event) {
  // The form decides: it hides the window when it goes.
  event->ignore();
  if (link_.form() != nullptr) link_.form()->close();
}

void QtFormWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (link_.form() == nullptr || layingOut_) return;
  if (event->type() == QEvent::WindowStateChange) reportState();
  const bool left = event->type() == QEvent::ActivationChange && !isActiveWindow();
  if (left) link_.form()->keyEvent(0);  // a release would go elsewhere
  if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange) layOut();
}

void QtFormWindow::paintEvent(QPaintEvent* event) {
  painted_ = true;
  QWidget::paintEvent(event);
}

void QtFormWindow::reportState() {
  Form& form = *link_.form();
  if (!form.visible() || !isVisible()) return;
  // Nobody minimises a window that is not on the screen yet: that is late news from before. And
  // whoever has opened a dialog above it must answer that one first.
  const QWidget* const dialog = QApplication::activeModalWidget();
  const bool blocked = dialog != nullptr && dialog != this;
  if (isMinimized() && (!painted_ || blocked)) return;
  form.setWindowState(isMinimized() ? WindowState::kMinimized : WindowState::kNormal);
}

bool QtFormWindow::eventFilter(QObject* watched, QEvent* event) {
  if (link_.form() == nullptr) return isInput(*event);
  const bool press = event->type() == QEvent::KeyPress;
  // A key that a control leaves alone is sent to the window next: it is one event all the same.
  const QObject* const listener = focusWidget() != nullptr ? focusWidget() : this;
  const bool key = (press || event->type() == QEvent::KeyRelease) && watched == listener;
  if (key) link_.form()->keyEvent(shiftMask(static_cast<const QKeyEvent&>(*event)));
  const bool released = link_.form() == nullptr;  // by the form's handler
  if ((released || discarding_) && isInput(*event)) return true;
  if (press || event->type() == QEvent::MouseButtonPress) focusKeeper_.userActs();
  if (press && (key || watched == this)) {
    const auto& pressed = static_cast<const QKeyEvent&>(*event);
    if (answersKey(pressed) || movesWithinOptions(pressed)) return true;
  }
  return QWidget::eventFilter(watched, event);
}

bool QtFormWindow::answersKey(const QKeyEvent& event) {
  const AnswerKey key = answerKeyOf(event);
  if (key == AnswerKey::kNone) return false;
  Control* button = answeredBy(*link_.form(), key, event.isAutoRepeat(), focusedControl());
  if (button != nullptr) button->click();
  return true;
}

bool QtFormWindow::movesWithinOptions(const QKeyEvent& event) {
  const int step = arrowStepOf(event);
  const Control* from = focusedControl();
  if (step == 0 || from == nullptr || from->row().kind == ControlKind::kTextBox) return false;
  if (Control* option = neighbouringOption(*link_.form(), *from, step)) {
    giveFocus(*option);
    option->click();
  }
  return true;
}

void QtFormWindow::giveFocus(const Control& control) const {
  for (const auto& widget : widgets_) {
    if (&widget->control() == &control) widget->widget().setFocus(Qt::TabFocusReason);
  }
}

Control* QtFormWindow::focusedControl() const {
  for (const auto& widget : widgets_) {
    if (&widget->widget() == focusWidget()) return &widget->control();
  }
  return nullptr;
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

void QtFormView::DeleteLater::operator()(QtFormWindow* window) const {
  window->detach();
  window->deleteLater();
}

}  // namespace karvel
