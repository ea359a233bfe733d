#pragma once

#include <cstdint>
#include <string>

#include "platform/desktop.h"
#include "platform/instance.h"
#include "send/panel_commands.h"
#include "shell/window_lifecycle.h"
#include "store/settings_store.h"
#include "ui/ftp_form.h"

namespace karvel {

/// How a start has ended.
enum class StartOutcome : std::uint8_t {
  kEnded,     ///< the program ends at once
  kPanel,     ///< the settings panel is open, the timer off
  kResident,  ///< the window is in the notification area, the timer on
};

/// The program's start: the main form's load handler.
class StartUp {
 public:
  static constexpr const char* kShowPanel = "-INIT";
  static constexpr const char* kShowGroupDialog = "-GRUP";

  StartUp(FtpForm& form, IniRedWrt& settings, PanelCommands& commands, WindowLifecycle& window,
          Desktop& desktop, Instance& instance, std::string programFolder);

  /// Refuses a second instance, completes and resets the settings, fills the panel, and acts on the
  /// command line.
  [[nodiscard]] StartOutcome Form_Load(const std::string& commandLine);

 private:
  void prepareOwnSettings();
  [[nodiscard]] bool locateTicketApplication();
  void selectDestination();
  void fillFields();
  void selectInterval();
  [[nodiscard]] StartOutcome actOn(const std::string& commandLine);
  StartOutcome endAtOnce();

  FtpForm& form_;
  IniRedWrt& settings_;
  PanelCommands& commands_;
  WindowLifecycle& window_;
  Desktop& desktop_;
  Instance& instance_;
  std::string programFolder_;
};

}  // namespace karvel
