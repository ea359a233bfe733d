#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "form/form.h"

namespace karvel {

/// A repeating timer on the user-interface thread; disabled when created.
class Timer {
 public:
  virtual ~Timer() = default;
  /// Enabling starts a full interval, also when it was enabled already; disabling drops a tick
  /// that is due but not yet delivered.
  virtual void setEnabled(bool enabled) = 0;
};

enum class TrayImage : std::uint8_t { kNormal, kFailure };

/// Windows, the notification area and the message loop. One thread makes every call and receives
/// every callback: the user-interface thread.
class Desktop {
 public:
  virtual ~Desktop() = default;

  /// False when windows cannot be shown here at all; the rest then works without showing.
  [[nodiscard]] virtual bool hasDisplay() const = 0;

  /// Makes the window of a form and binds both to each other, until release() or the desktop's
  /// end. The window is shown when the form is visible. Without a display a form that would be
  /// shown in its normal state is minimised the next time messages are processed.
  virtual void bind(Form& form) = 0;
  virtual void release(Form& form) = 0;

  /// Shows a form that is not bound yet as a modal dialog above `owner`; returns when it is
  /// closed or the program ends. Without a display it is closed at once, as by its close box.
  virtual void showModal(Form& dialog, Form& owner) = 0;

  /// Forgets clicks and keys for the form's window that have come and not been answered yet, as
  /// they do while the program is busy. Which modifiers are held is reported all the same.
  virtual void discardInput(Form& form) = 0;

  /// Brings the form's window to the foreground.
  virtual void bringToForeground(Form& form) = 0;

  /// A message with the critical icon and an OK button; returns when the user has closed it.
  /// Without a display the text goes to standard error.
  virtual void messageBox(Form& owner, const std::string& title, const std::string& text) = 0;

  /// The operating system's folder dialog; the chosen folder's path, or "" when cancelled.
  [[nodiscard]] virtual std::string browseForFolder(Form& owner, const std::string& title) = 0;

  /// Adds the program's one notification-area icon; `onRightButtonUp` runs when the right mouse
  /// button is released over it, unless a dialog, a message box or a menu waits for its answer.
  /// Where there is no notification area the icon appears as soon as there is one.
  virtual void addTrayIcon(Form& owner, TrayImage image, const std::string& tip,
                           std::function<void()> onRightButtonUp) = 0;
  virtual void changeTrayIcon(TrayImage image, const std::string& tip) = 0;
  /// Removes it, and with it an open menu, of which nothing is chosen then.
  virtual void removeTrayIcon() = 0;

  /// Opens a popup menu at the mouse pointer; the chosen entry's handler runs after the menu has
  /// closed. `items` must outlive the menu.
  virtual void popupMenu(Form& owner, const std::vector<MenuItem*>& items) = 0;

  /// A timer that calls `onTick` every interval while it is enabled.
  [[nodiscard]] virtual std::unique_ptr<Timer> createTimer(std::chrono::milliseconds interval,
                                                           std::function<void()> onTick) = 0;

  /// Handles what waits in the message queue, then returns.
  virtual void processPendingMessages() = 0;

  /// Called when the operating system or the session asks the program to end.
  virtual void setEndSessionHandler(std::function<void()> handler) = 0;

  /// Runs the message loop until quit().
  virtual void run() = 0;
  /// Ends the message loop, and with it every modal loop inside it.
  virtual void quit() = 0;
};

}  // namespace karvel
