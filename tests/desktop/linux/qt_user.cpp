#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <csignal>
#include <utility>

#include "desktop/desktop_user.h"
#include "platform/linux/desktop/qt_desktop.h"
#include "platform/linux/desktop/qt_text.h"

namespace karvel {
namespace {

QWidget* qt(Widget widget) {
  return reinterpret_cast<QWidget*>(widget);
}

Widget handle(QWidget* widget) {
  return reinterpret_cast<Widget>(widget);
}

template <class Kind>
Kind* as(Widget widget) {
  return qobject_cast<Kind*>(qt(widget));
}

constexpr struct {
  Key key;
  Qt::Key code;
  Qt::KeyboardModifier modifier;
  const char* text;
} kKeys[] = {
    {Key::kShift, Qt::Key_Shift, Qt::ShiftModifier, ""},
    {Key::kControl, Qt::Key_Control, Qt::ControlModifier, ""},
    {Key::kAlt, Qt::Key_Alt, Qt::AltModifier, ""},
    {Key::kA, Qt::Key_A, Qt::NoModifier, "a"},
    {Key::kC, Qt::Key_C, Qt::NoModifier, "c"},
    {Key::kV, Qt::Key_V, Qt::NoModifier, "v"},
    {Key::kF5, Qt::Key_F5, Qt::NoModifier, ""},
    {Key::kTab, Qt::Key_Tab, Qt::NoModifier, "\t"},
    {Key::kBackspace, Qt::Key_Backspace, Qt::NoModifier, ""},
    {Key::kSpace, Qt::Key_Space, Qt::NoModifier, " "},
    {Key::kEnter, Qt::Key_Return, Qt::NoModifier, "\r"},
    {Key::kKeypadEnter, Qt::Key_Enter, Qt::KeypadModifier, "\r"},
    {Key::kEscape, Qt::Key_Escape, Qt::NoModifier, ""},
    {Key::kUp, Qt::Key_Up, Qt::NoModifier, ""},
    {Key::kDown, Qt::Key_Down, Qt::NoModifier, ""},
};

/// QApplication's own answer is none after a window has been hidden and shown again: this platform
/// says nothing of the hiding.
QWidget* focusWidget() {
  const QWindow* const active = QGuiApplication::focusWindow();
  for (const QWidget* window : QApplication::topLevelWidgets()) {
    if (active != nullptr && window->windowHandle() == active) return window->focusWidget();
  }
  return nullptr;
}

/// What the keyboard speaks to.
QObject* listener() {
  if (QWidget* popup = QApplication::activePopupWidget()) return popup;
  if (QWidget* focused = focusWidget()) return focused;
  return QApplication::activeModalWidget();
}

/// As X11 says it: with the modifiers as they were before.
void send(QEvent::Type type, Key wanted, std::uint32_t heldKeys) {
  Qt::KeyboardModifiers modifiers;
  for (const auto& known : kKeys) {
    const bool held = (heldKeys >> static_cast<unsigned>(known.key) & 1U) != 0;
    if (held && known.key != wanted) modifiers |= known.modifier;
  }
  for (const auto& known : kKeys) {
    if (known.key != wanted) continue;
    if (type == QEvent::KeyRelease || known.code == Qt::Key_Enter) modifiers |= known.modifier;
    QString text = QString::fromLatin1(known.text);
    if (modifiers.testFlag(Qt::ShiftModifier)) text = text.toUpper();
    if (modifiers.testFlag(Qt::ControlModifier)) text.clear();
    const bool repeated = (heldKeys >> static_cast<unsigned>(wanted) & 1U) != 0;
    QKeyEvent event(type, known.code, modifiers, text, type == QEvent::KeyPress && repeated);
    if (QObject* const target = listener()) QApplication::sendEvent(target, &event);
  }
}

QString withoutMnemonics(QString caption) {
  return caption.replace(QStringLiteral("&&"), QStringLiteral("\x01"))
      .remove(QLatin1Char('&'))
      .replace(QLatin1Char('\x01'), QLatin1Char('&'));
}

QString objectName(const ControlRow& row) {
  return QString::fromUtf8(row.name) +
         (row.index == ControlRow::kNoIndex ? QString() : QString::number(row.index));
}

class PaintCounter final : public QObject {
 public:
  PaintCounter(QWidget& watched, int& paints) : QObject(&watched), paints_(paints) {
    watched.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++paints_;
    return false;
  }

 private:
  int& paints_;
};

}  // namespace

std::unique_ptr<Desktop> makeDesktop() {
  return std::make_unique<QtDesktop>(true);
}

Widget User::window(const Form& form) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->objectName() == QLatin1String(form.table().name)) return handle(window);
  }
  return nullptr;
}

Widget User::widget(const Form& form, const Control& control) {
  return handle(qt(window(form))->findChild<QWidget*>(objectName(control.row())));
}

void User::hold(Key key) {
  send(QEvent::KeyPress, key, heldKeys_);
  heldKeys_ |= 1U << static_cast<unsigned>(key);
  settle();
}

void User::release(Key key) {
  send(QEvent::KeyRelease, key, heldKeys_);
  heldKeys_ &= ~(1U << static_cast<unsigned>(key));
  settle();
}

void User::type(const std::string& text) {
  for (const char32_t character : toQt(text).toStdU32String()) {
    // What no key writes comes from an input method.
    const QString typed = QString::fromUcs4(&character, 1);
    if (typed.size() > 1) {
      QInputMethodEvent event;
      event.setCommitString(typed);
      QApplication::sendEvent(listener(), &event);
    } else {
      QKeyEvent event(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, typed);
      QApplication::sendEvent(listener(), &event);
    }
  }
  settle();
}

void User::click(Widget widget) {
  QTest::mouseClick(qt(widget), Qt::LeftButton, {}, QPoint(8, qt(widget)->height() / 2));
  settle();
}

void User::clickAhead(Widget widget) {
  const QPointF point(8, qt(widget)->height() / 2.0);
  const QPointF onScreen = qt(widget)->mapToGlobal(point);
  for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    QCoreApplication::postEvent(
        qt(widget), new QMouseEvent(type, point, onScreen, Qt::LeftButton, held, Qt::NoModifier));
  }
}

void User::focus(Widget widget) {
  qt(widget)->setFocus(Qt::TabFocusReason);
  settle();
}

void User::putOnClipboard(const std::string& text) {
  QApplication::clipboard()->setText(toQt(text));
}

std::string User::clipboard() {
  return fromQt(QApplication::clipboard()->text());
}

void User::useCloseBox(Widget window) {
  qt(window)->close();
  settle();
}

void User::minimize(Widget window) {
  qt(window)->setWindowState(Qt::WindowMinimized);
  settle();
}

void User::setTextSize(double factor) {
  QFont font = QApplication::font();
  font.setPointSizeF(font.pointSizeF() * factor / std::exchange(textSize_, factor));
  QApplication::setFont(font);
  settle();
}

void User::endSession() {
  std::raise(SIGTERM);
}

void User::soon(std::function<void()> action) {
  QTimer::singleShot(0, qApp, [this, action = std::move(action)] { doInside(action); });
}

std::string User::text(Widget widget) {
  if (qt(widget)->isWindow()) return fromQt(qt(widget)->windowHandle()->title());
  if (const auto* field = as<QLineEdit>(widget)) return fromQt(field->displayText());
  if (const auto* button = as<QAbstractButton>(widget)) {
    return fromQt(withoutMnemonics(button->text()));
  }
  const auto* label = as<QLabel>(widget);
  return (label->textFormat() == Qt::PlainText ? "" : "formatted: ") + fromQt(label->text());
}

std::string User::selectedText(Widget field) {
  return fromQt(as<QLineEdit>(field)->selectedText());
}

bool User::isShown(Widget widget) {
  return widget != nullptr && qt(widget)->isVisible();
}

bool User::isEnabled(Widget widget) {
  return qt(widget)->isEnabled();
}

bool User::isChecked(Widget option) {
  return as<QAbstractButton>(option)->isChecked();
}

bool User::looksDefault(Widget button) {
  return as<QPushButton>(button)->isDefault();
}

bool User::takesInputMethod(Widget field) {
  return qt(field)->testAttribute(Qt::WA_InputMethodEnabled);
}

std::string User::toolTip(Widget widget) {
  return fromQt(qt(widget)->toolTip());
}

std::string User::spokenName(Widget field) {
  return fromQt(qt(field)->accessibleName());
}

Widget User::focused() {
  return handle(focusWidget());
}

WindowLook User::look(Widget window) {
  const QWidget& seen = *qt(window);
  const QWidget* const modal = QApplication::activeModalWidget();
  return {.minimized = seen.isMinimized(),
          .onTop = seen.windowFlags().testFlag(Qt::WindowStaysOnTopHint),
          .blocked = modal != nullptr && modal != &seen,
          .canBeMinimized = seen.windowFlags().testFlag(Qt::WindowMinimizeButtonHint),
          .canBeResized = seen.minimumSize() != seen.maximumSize()};
}

Place User::place(Widget widget) {
  const QRect own = qt(widget)->isWindow() ? qt(widget)->rect() : qt(widget)->geometry();
  return {own.left(), own.top(), own.left() + own.width(), own.top() + own.height()};
}

Size User::needed(Widget widget) {
  const QFontMetrics metrics = qt(widget)->fontMetrics();
  if (const auto* label = as<QLabel>(widget)) return {0, label->heightForWidth(label->width())};
  if (const auto* button = as<QPushButton>(widget)) {
    return {metrics.horizontalAdvance(button->text()) + 2 * metrics.averageCharWidth(),
            metrics.height() + 4};
  }
  if (const auto* option = as<QAbstractButton>(widget)) {
    return {option->sizeHint().width(), metrics.height()};
  }
  return {0, as<QLineEdit>(widget) != nullptr ? metrics.height() + 4 : 0};
}

std::optional<Message> User::message() {
  const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
  if (box == nullptr) return std::nullopt;
  const bool plain = box->textFormat() == Qt::PlainText;
  return Message{fromQt(box->windowTitle()), (plain ? "" : "formatted: ") + fromQt(box->text()),
                 box->icon() == QMessageBox::Critical};
}

std::vector<MenuLine> User::menu() {
  std::vector<MenuLine> lines;
  const auto* open = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  if (open == nullptr) return lines;
  for (const QAction* action : open->actions()) {
    const QString text = action->isSeparator() ? QStringLiteral("-") : action->text();
    lines.push_back({fromQt(withoutMnemonics(text)), action->isSeparator() || action->isEnabled()});
  }
  return lines;
}

void User::watchPainting(Widget widget) {
  new PaintCounter(*qt(widget), paints_);  // which the widget takes over
  if (!QTest::qWaitForWindowExposed(qt(widget)->window())) std::abort();
  paints_ = 0;
}

}  // namespace karvel
