#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "form/layout.h"
#include "platform/desktop.h"

namespace karvel {

/// The real window or control on the screen; null where there is none.
using Widget = struct WidgetOnScreen*;

/// By their numbers on Windows.
enum class Key : std::uint8_t {
  kTab = 0x09,
  kEnter = 0x0D,
  kShift = 0x10,
  kControl = 0x11,
  kEscape = 0x1B,
  kSpace = 0x20,
  kUp = 0x26,
  kDown = 0x28,
  kV = 'V',
};

/// What the user sees of a control or a window; nothing of one that is not there.
struct Sight {
  bool isShown = false;
  bool isEnabled = false;  ///< of a window: no modal dialog is open above it
  bool isChecked = false;
  bool looksDefault = false;  ///< framed as the button that Enter presses
  bool takesInputMethod = false;
  bool canBeMinimized = false;
  bool waits = false;  ///< the mouse over it has the shape of waiting
  std::string text;    ///< letter for letter; a password as what is shown for it
  std::string selectedText;
  std::string toolTip;
  std::string spokenName;  ///< what a screen reader calls a field
  PixelRect place;         ///< of a control within its window, or of the window's whole inside
  PixelPoint needed;       ///< for what is written in a field or button, and its frame
};

/// As a caption is shown in which "&" underlines a letter and "&&" stands for itself.
inline std::string withoutMnemonics(const std::string& caption) {
  std::string shown;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&') ++i;
    if (i < caption.size()) shown += caption[i];
  }
  return shown;
}

/// The platform's own desktop. One at a time.
std::unique_ptr<Desktop> makeDesktop();

/// A user in front of the platform's screen: hands and eyes, and no knowledge of the forms behind
/// the widgets.
class User {
 public:
  explicit User(Desktop& desktop) : desktop_(desktop) {}
  ~User() { setTextSize(1); }
  User(const User&) = delete;
  User& operator=(const User&) = delete;

  [[nodiscard]] static Widget window(const Form& form);
  /// The form must have been shown.
  [[nodiscard]] static Widget widget(const Form& form, const Control& control);

  // What the user does. The program has answered it on return, except inside soon().

  /// The keyboard speaks to what has the focus, or to the open menu.
  void hold(Key key) {
    move(key, true);
    heldKeys_.insert(key);
  }
  void release(Key key) {
    move(key, false);
    heldKeys_.erase(key);
  }
  void press(Key key) {
    hold(key);
    release(key);
  }
  void type(const std::string& text);
  void paste(const std::string& text) {
    putOnClipboard(text);
    hold(Key::kControl);
    press(Key::kV);
    release(Key::kControl);
  }
  void click(Widget widget) {
    clickAhead(widget);
    settle();
  }
  /// While the program is busy: it learns of it later.
  void clickAhead(Widget widget);
  void focus(Widget widget);
  void useCloseBox(Widget window);
  void minimize(Widget window);
  /// As the system's font or resolution grows, with what is shown; 1 is the usual size.
  void setTextSize(double factor);

  /// Does something inside the next message loop.
  void soon(const std::function<void()>& action) {
    auto& timer = timers_.emplace_back();
    timer = desktop_.createTimer(std::chrono::milliseconds(1), [this, &timer, action] {
      timer->setEnabled(false);
      const bool before = std::exchange(insideLoop_, true);
      action();
      insideLoop_ = before;
    });
    timer->setEnabled(true);
  }

  // What the user sees.

  [[nodiscard]] static Sight look(Widget widget);
  [[nodiscard]] static Widget focused();
  /// The message box on the screen as "title: text", with "!" before it when it has the critical
  /// icon.
  [[nodiscard]] static std::string message();
  /// The open menu's lines, each with "|" behind it: "-" is a separator, "(text)" is disabled.
  [[nodiscard]] static std::string menu();

 private:
  void move(Key key, bool down);
  static void putOnClipboard(const std::string& text);
  void settle() {
    if (!insideLoop_) desktop_.processPendingMessages();
  }

  Desktop& desktop_;
  bool insideLoop_ = false;
  double textSize_ = 1;
  std::set<Key> heldKeys_;
  std::deque<std::unique_ptr<Timer>> timers_;
};

}  // namespace karvel
