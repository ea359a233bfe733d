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
///
/// A host may have no display. Forms are data only then, and what would wait for the user's answer
/// is over at once; each function says how. Timers and the message loop work all the same.
class Desktop {
 public:
  virtual ~Desktop() = default;

  /// False when windows cannot be shown here at all.
  [[nodiscard]] virtual bool hasDisplay() const = 0;

  /// Makes the window of a form and binds both to each other, until release() or the desktop's
  /// end. The window is shown when the form is visible: the first time in the middle of the screen,
  /// later where the user has left it. Without a display a form that would be shown in its normal
  /// state is minimised the next time messages are processed.
  virtual void bind(Form& form) = 0;
  /// Removes the form's window, and its notification-area icon if it has one. Nothing
  /// that has happened there, or happens until the window has really gone, reaches the form any
  /// more. May be called by a handler of that very form.
  virtual void release(Form& form) = 0;

  /// Shows a form that is not bound yet as a modal dialog above `owner`; returns when it is closed
  /// or the program ends. It is closed at once, as by its close box, without a display and when the
  /// owner takes no input (any more).
  virtual void showModal(Form& dialog, Form& owner) = 0;

  /// Shows a wait cursor while the program is busy and answers no messages. Clicks and keys for the
  /// form's window that have come meanwhile are discarded when `busy` ends; which modifiers are
  /// held is reported all the same. Use BusyScope.
  virtual void setBusy(Form& form, bool busy) = 0;

  /// Brings the form's window to the foreground.
  virtual void bringToForeground(Form& form) = 0;

  /// A message with the critical icon and an OK button; returns when the user has closed it, and at
  /// once when the owner takes no input. Without a display the text goes to standard error.
  virtual void messageBox(Form& owner, const std::string& title, const std::string& text) = 0;

  /// The operating system's folder dialog, which begins at `start` if that is a folder; the chosen
  /// folder's path. "" when cancelled, without a display, and when the owner takes no input.
  [[nodiscard]] virtual std::string browseForFolder(Form& owner, const std::string& title,
                                                    const std::string& start) = 0;

  /// Adds the program's one notification-area icon, whose image becomes that of the form's window,
  /// too. `onRightButtonUp` runs when the right mouse button is released over it, unless a dialog,
  /// a message box or a menu waits for its answer. Where there is no notification area (yet) the
  /// icon appears as soon as there is one.
  virtual void addTrayIcon(Form& owner, TrayImage image, const std::string& tip,
                           std::function<void()> onRightButtonUp) = 0;
  /// Does nothing while there is no icon.
  virtual void changeTrayIcon(TrayImage image, const std::string& tip) = 0;
  /// Removes it, and with it an open menu, of which nothing is chosen then.
  virtual void removeTrayIcon() = 0;

  /// Opens a popup menu at the mouse pointer and gives the chosen entry to the owner (see
  /// MenuItem::choose) after the menu has closed. It closes before anything else opens that waits
  /// for an answer. `items` must outlive it. Without a display there is no menu.
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

/// The program is busy for as long as it lives.
class BusyScope {
 public:
  BusyScope(Desktop& desktop, Form& form) : desktop_(desktop), form_(form) {
    desktop_.setBusy(form_, true);
  }
  ~BusyScope() { desktop_.setBusy(form_, false); }
  BusyScope(const BusyScope&) = delete;
  BusyScope& operator=(const BusyScope&) = delete;

 private:
  Desktop& desktop_;
  Form& form_;
};

}  // namespace karvel
