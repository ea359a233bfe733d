#pragma once

#include <cstdint>
#include <string>

#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "ui/ftp_form.h"

namespace karvel {

/// The main window between panel and notification area, and the end of the program.
///
/// A minimised window is hidden, has an icon in the notification area and the interval timer
/// running. Everything here runs on the user-interface thread and may process pending messages.
class WindowLifecycle {
 public:
  WindowLifecycle(FtpForm& form, Desktop& desktop, Files& files, Clock& clock,
                  std::string programFolder);

  /// Moves the window into the notification area.
  void Task_Add();
  /// Brings it back as the settings panel.
  void Task_Remove();
  /// Shows the failure icon or the normal one, while the window is hidden.
  void Task_SetIcon(bool failed);
  /// Opens the tray menu at the mouse pointer.
  void Task_PopMenu();

  /// Closes the main form and ends the program: timer off, icon removed, work files deleted.
  void unloadMainForm();
  /// The part of that which an aborted start needs, too: timer off, icon removed.
  void Form_QueryUnload();
  /// Deletes "*.txt" in the program's folder; files that cannot be deleted stay.
  void deleteWorkFiles();

  // Events of the main form and its menu.
  void Form_Resize();
  void Form_KeyDown(int shift);
  void MyMenu_Init_Click();

 private:
  void Form_Terminate();

  FtpForm& form_;
  Desktop& desktop_;
  Files& files_;
  Clock& clock_;
  std::string programFolder_;
};

}  // namespace karvel
