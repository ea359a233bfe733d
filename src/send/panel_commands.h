#pragma once

#include <functional>
#include <string>

#include "platform/desktop.h"
#include "send/send_run.h"
#include "send/send_settings.h"
#include "store/settings_store.h"
#include "ui/ftp_form.h"

namespace karvel {

/// The panel's five command buttons and the tray menu's manual send.
class PanelCommands {
 public:
  PanelCommands(FtpForm& form, SendRun& sendRun, SendSettings& sendSettings, IniRedWrt& settings,
                Desktop& desktop, std::string programFolder);

  /// Closes the main form, and with it the program.
  std::function<void()> unloadMainForm;

  /// A button of FtpForm::Command; any other index does nothing.
  void Command1_Click(int index);
  void MyMenu_Send_Click();

 private:
  void runFromPanel(SendMode mode);
  void stayOrEnd();
  void registerGroup();

  FtpForm& form_;
  SendRun& sendRun_;
  SendSettings& sendSettings_;
  IniRedWrt& settings_;
  Desktop& desktop_;
  std::string programFolder_;
};

}  // namespace karvel
