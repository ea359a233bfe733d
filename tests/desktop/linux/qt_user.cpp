#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QWindow>

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

struct QtKey {
  Qt::Key code;
  const char* text = "";
  Qt::KeyboardModifier modifier = Qt::NoModifier;
};

const std::map<Key, QtKey> kKeys = {
    {Key::kTab, {Qt::Key_Tab, "\t"}},
    {Key::kEnter, {Qt::Key_Return, "\r"}},
    {Key::kShift, {Qt::Key_Shift, "", Qt::ShiftModifier}},
    {Key::kControl, {Qt::Key_Control, "", Qt::ControlModifier}},
    {Key::kEscape, {Qt::Key_Escape}},
    {Key::kSpace, {Qt::Key_Space, " "}},
    {Key::kUp, {Qt::Key_Up}},
    {Key::kDown, {Qt::Key_Down}},
    {Key::kV, {Qt::Key_V, "V"}},
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

/// As X11 says it: with the modifiers as they were before.
void User::move(Key key, bool down) {
  const auto& [code, text, modifier] = kKeys.at(key);
  Qt::KeyboardModifiers modifiers;
  for (const Key other : heldKeys_) modifiers |= kKeys.at(other).modifier;
  const bool written = !modifiers.testFlag(Qt::ControlModifier);
  send(QKeyEvent(down ? QEvent::KeyPress : QEvent::KeyRelease, code, modifiers,
                 written ? QLatin1String(text) : QString(), down && heldKeys_.contains(key)));
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
    const QWidget& window = *qt(widget)->window();
    const QPoint place = qt(widget)->mapTo(&window, QPoint(8, qt(widget)->height() / 2));
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, place);
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

Sight User::look(Widget widget) {
  if (widget == nullptr) return {};
  const QWidget& seen = *qt(widget);
  const QWidget* const modal = QApplication::activeModalWidget();
  const bool blocked = seen.isWindow() && modal != nullptr && modal != &seen;
  const QRect place = seen.isWindow() ? seen.rect() : seen.geometry();
  Sight sight;
  sight.isShown = seen.isVisible();
  sight.isEnabled = seen.isEnabled() && !blocked;
  sight.takesInputMethod = seen.testAttribute(Qt::WA_InputMethodEnabled);
  sight.canBeMinimized = seen.windowFlags().testFlag(Qt::WindowMinimizeButtonHint);
  const QCursor* const cursor = QApplication::overrideCursor();
  sight.waits = cursor != nullptr && cursor->shape() == Qt::WaitCursor;
  sight.toolTip = fromQt(seen.toolTip());
  sight.spokenName = fromQt(seen.accessibleName());
  sight.place = {place.left(), place.top(), place.width(), place.height()};
  const QFontMetrics metrics = seen.fontMetrics();
  if (seen.isWindow()) {
    sight.text = fromQt(seen.windowHandle()->title());
  } else if (const auto* field = as<QLineEdit>(widget)) {
    sight.text = fromQt(field->displayText());
    sight.selectedText = fromQt(field->selectedText());
    sight.needed = {0, metrics.height() + 4};
  } else if (const auto* label = as<QLabel>(widget)) {
    sight.text = plainText(*label);
  } else if (const auto* button = as<QAbstractButton>(widget)) {
    sight.text = withoutMnemonics(fromQt(button->text()));
    sight.isChecked = button->isChecked();
    sight.needed = {button->sizeHint().width(), metrics.height()};
  }
  if (const auto* button = as<QPushButton>(widget)) {
    sight.looksDefault = button->isDefault();
    sight.needed = {metrics.horizontalAdvance(button->text()) + 2 * metrics.averageCharWidth(),
                    metrics.height() + 4};
  }
  return sight;
}

Widget User::focused() {
  return handle(focusWidget());
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
    const std::string text = action->isSeparator() ? "-" : withoutMnemonics(fromQt(action->text()));
    lines += (action->isEnabled() ? text : "(" + text + ")") + "|";
  }
  return lines;
}

}  // namespace karvel
