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

enum class Key : std::uint8_t {
  kShift,
  kControl,
  kA,
  kV,
  kTab,
  kSpace,
  kEnter,
  kEscape,
  kUp,
  kDown,
};

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
  void hold(Key key);
  void release(Key key);
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
  void endSession();

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

  /// Letter for letter; a password as what is shown for it.
  [[nodiscard]] static std::string text(Widget widget);
  [[nodiscard]] static std::string selectedText(Widget field);
  [[nodiscard]] static bool isShown(Widget widget);
  [[nodiscard]] static bool isEnabled(Widget widget);
  [[nodiscard]] static bool isChecked(Widget option);
  /// Framed as the button that Enter presses.
  [[nodiscard]] static bool looksDefault(Widget button);
  [[nodiscard]] static bool takesInputMethod(Widget field);
  [[nodiscard]] static std::string toolTip(Widget widget);
  /// What a screen reader calls it.
  [[nodiscard]] static std::string spokenName(Widget field);
  [[nodiscard]] static Widget focused();
  [[nodiscard]] static bool canBeMinimized(Widget window);
  /// By a modal dialog.
  [[nodiscard]] static bool isBlocked(Widget window);

  /// Of a control within its window, or of the window's whole inside.
  [[nodiscard]] static PixelRect place(Widget widget);
  /// Room for the caption, as it is wrapped, and what is drawn around it. 0 is any.
  [[nodiscard]] static PixelPoint needed(Widget widget);

  /// The message box on the screen as "title: text", with "!" before it when it has the critical
  /// icon.
  [[nodiscard]] static std::string message();
  /// The open menu's lines, each with "|" behind it: "-" is a separator, "(text)" is disabled.
  [[nodiscard]] static std::string menu();

 private:
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
