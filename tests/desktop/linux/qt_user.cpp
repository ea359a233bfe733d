#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QWindow>
#include <csignal>

#include "desktop/desktop_user.h"
#include "platform/linux/desktop/qt_desktop.h"
#include "platform/linux/desktop/qt_text.h"

/// QtGui's, as QTest uses it: an event of the window system's.
void qt_handleMouseEvent(QWindow* window, const QPointF& local, const QPointF& global,
                         Qt::MouseButtons state, Qt::MouseButton button, QEvent::Type type,
                         Qt::KeyboardModifiers modifiers, int timestamp);

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

/// By Key.
constexpr struct {
  Qt::Key code;
  const char* text = "";
  Qt::KeyboardModifier modifier = Qt::NoModifier;
} kKeys[] = {
    {Qt::Key_Shift, "", Qt::ShiftModifier},
    {Qt::Key_Control, "", Qt::ControlModifier},
    {Qt::Key_A, "a"},
    {Qt::Key_V, "v"},
    {Qt::Key_Tab, "\t"},
    {Qt::Key_Space, " "},
    {Qt::Key_Return, "\r"},
    {Qt::Key_Escape},
    {Qt::Key_Up},
    {Qt::Key_Down},
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

/// To what the keyboard speaks to.
void send(QEvent&& event) {
  QObject* listener = QApplication::activePopupWidget();
  if (listener == nullptr) listener = focusWidget();
  if (listener == nullptr) listener = QApplication::activeModalWidget();
  if (listener != nullptr) QApplication::sendEvent(listener, &event);
}

/// As X11 says it: with the modifiers as they were before.
void send(QEvent::Type type, Key wanted, const std::set<Key>& held) {
  const auto& key = kKeys[static_cast<int>(wanted)];
  Qt::KeyboardModifiers modifiers;
  for (const Key other : held) modifiers |= kKeys[static_cast<int>(other)].modifier;
  QString text = QString::fromLatin1(key.text);
  if (modifiers.testFlag(Qt::ShiftModifier)) text = text.toUpper();
  if (modifiers.testFlag(Qt::ControlModifier)) text.clear();
  const bool repeated = type == QEvent::KeyPress && held.contains(wanted);
  send(QKeyEvent(type, key.code, modifiers, text, repeated));
}

std::string withoutMnemonics(QString caption) {
  return fromQt(caption.replace(QStringLiteral("&&"), QStringLiteral("\x01"))
                    .remove(QLatin1Char('&'))
                    .replace(QLatin1Char('\x01'), QLatin1Char('&')));
}

/// QLabel or QMessageBox.
template <class Shown>
std::string plainText(const Shown& shown) {
  return (shown.textFormat() == Qt::PlainText ? "" : "formatted: ") + fromQt(shown.text());
}

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
  const int index = control.row().index;
  const QString number = index == ControlRow::kNoIndex ? QString() : QString::number(index);
  return handle(qt(window(form))->findChild<QWidget*>(control.row().name + number));
}

void User::hold(Key key) {
  send(QEvent::KeyPress, key, heldKeys_);
  heldKeys_.insert(key);
  settle();
}

void User::release(Key key) {
  send(QEvent::KeyRelease, key, heldKeys_);
  heldKeys_.erase(key);
  settle();
}

void User::type(const std::string& text) {
  for (const char32_t character : toQt(text).toStdU32String()) {
    const QString typed = QString::fromUcs4(&character, 1);
    if (typed.size() == 1) {
      send(QKeyEvent(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, typed));
      continue;
    }
    // What no key writes comes from an input method.
    QInputMethodEvent event;
    event.setCommitString(typed);
    send(std::move(event));
  }
  settle();
}

void User::clickAhead(Widget widget) {
  const auto deliver = [widget] {
    static int now = 0;
    now += 10'000;  // no second half of a double click
    const QWidget& window = *qt(widget)->window();
    const QPoint local = qt(widget)->mapTo(&window, QPoint(8, qt(widget)->height() / 2));
    for (const bool held : {true, false}) {
      qt_handleMouseEvent(window.windowHandle(), local, window.mapToGlobal(local),
                          held ? Qt::LeftButton : Qt::NoButton, Qt::LeftButton,
                          held ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease, {}, now);
    }
  };
  QMetaObject::invokeMethod(qt(widget), deliver, Qt::QueuedConnection);
}

void User::focus(Widget widget) {
  qt(widget)->setFocus(Qt::TabFocusReason);
  settle();
}

void User::putOnClipboard(const std::string& text) {
  QApplication::clipboard()->setText(toQt(text));
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

std::string User::text(Widget widget) {
  if (qt(widget)->isWindow()) return fromQt(qt(widget)->windowHandle()->title());
  if (const auto* field = as<QLineEdit>(widget)) return fromQt(field->displayText());
  if (const auto* button = as<QAbstractButton>(widget)) return withoutMnemonics(button->text());
  return plainText(*as<QLabel>(widget));
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

bool User::canBeMinimized(Widget window) {
  return qt(window)->windowFlags().testFlag(Qt::WindowMinimizeButtonHint);
}

bool User::isBlocked(Widget window) {
  const QWidget* const modal = QApplication::activeModalWidget();
  return modal != nullptr && modal != qt(window);
}

PixelRect User::place(Widget widget) {
  const QRect own = qt(widget)->isWindow() ? qt(widget)->rect() : qt(widget)->geometry();
  return {own.left(), own.top(), own.width(), own.height()};
}

PixelPoint User::needed(Widget widget) {
  const QFontMetrics metrics = qt(widget)->fontMetrics();
  if (const auto* label = as<QLabel>(widget)) return {0, label->heightForWidth(label->width())};
  if (const auto* button = as<QPushButton>(widget)) {
    return {metrics.horizontalAdvance(button->text()) + 2 * metrics.averageCharWidth(),
            metrics.height() + 4};
  }
  if (as<QAbstractButton>(widget) != nullptr) {
    return {qt(widget)->sizeHint().width(), metrics.height()};
  }
  return {0, as<QLineEdit>(widget) != nullptr ? metrics.height() + 4 : 0};
}

std::string User::message() {
  const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
  if (box == nullptr) return {};
  const char* const mark = box->icon() == QMessageBox::Critical ? "!" : "";
  return mark + fromQt(box->windowTitle()) + ": " + plainText(*box);
}

std::string User::menu() {
  std::string lines;
  const auto* open = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  if (open == nullptr) return lines;
  for (const QAction* action : open->actions()) {
    const std::string text = action->isSeparator() ? "-" : withoutMnemonics(action->text());
    lines += (action->isEnabled() ? text : "(" + text + ")") + "|";
  }
  return lines;
}

}  // namespace karvel
