#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "form/form.h"
#include "platform/desktop.h"

namespace karvel {

/// The real window or control on the screen; null where there is none.
using Widget = struct WidgetOnScreen*;

enum class Key : std::uint8_t {
  kShift,
  kControl,
  kAlt,
  kA,
  kC,
  kV,
  kF5,
  kTab,
  kBackspace,
  kSpace,
  kEnter,
  kKeypadEnter,
  kEscape,
  kUp,
  kDown,
};

struct Size {
  int width = 0;
  int height = 0;
};

/// In pixels, within the window's inside.
struct Place {
  int left = 0;
  int top = 0;
  int right = 0;  ///< the first pixel that is outside, as is bottom
  int bottom = 0;

  [[nodiscard]] Size size() const { return {right - left, bottom - top}; }
  [[nodiscard]] bool contains(const Place& other) const {
    return left <= other.left && top <= other.top && right >= other.right && bottom >= other.bottom;
  }
  [[nodiscard]] bool overlaps(const Place& other) const {
    return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
  }
};

struct WindowLook {
  bool minimized = false;
  bool onTop = false;
  bool blocked = false;  ///< by a modal dialog
  bool canBeMinimized = false;
  bool canBeResized = false;
};

struct Message {
  std::string title;
  std::string text;
  bool critical = false;
};

struct MenuLine {
  std::string text;  ///< "-" is a separator
  bool enabled = true;
  bool operator==(const MenuLine&) const = default;
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
  void pressWith(Key modifier, Key key) {
    hold(modifier);
    press(key);
    release(modifier);
  }
  void type(const std::string& text);
  void click(Widget widget);
  /// While the program is busy: it learns of it later.
  void clickAhead(Widget widget);
  void focus(Widget widget);
  void putOnClipboard(const std::string& text);
  void useCloseBox(Widget window);
  void minimize(Widget window);
  /// As the system's font or resolution grows, with what is shown; 1 is the usual size.
  void setTextSize(double factor);
  void endSession();

  /// Does something inside the next message loop.
  void soon(std::function<void()> action);

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
  [[nodiscard]] static std::string clipboard();

  [[nodiscard]] static WindowLook look(Widget window);
  /// Of a control, or the window's whole inside.
  [[nodiscard]] static Place place(Widget widget);
  /// Room for the caption, as it is wrapped, and what is drawn around it. 0 is any.
  [[nodiscard]] static Size needed(Widget widget);

  [[nodiscard]] static std::optional<Message> message();
  /// The open menu's lines.
  [[nodiscard]] static std::vector<MenuLine> menu();

  /// How often the widget has been painted since it is watched.
  void watchPainting(Widget widget);
  [[nodiscard]] int paints() const { return paints_; }

 private:
  void settle() {
    if (!insideLoop_) desktop_.processPendingMessages();
  }
  void doInside(const std::function<void()>& action) {
    const bool before = std::exchange(insideLoop_, true);
    action();
    insideLoop_ = before;
  }

  Desktop& desktop_;
  bool insideLoop_ = false;
  double textSize_ = 1;
  int paints_ = 0;
  std::uint32_t heldKeys_ = 0;  ///< bits by Key
};

}  // namespace karvel
