#pragma once

#include "send/panel_commands.h"
#include "send/send_run.h"
#include "shell/window_lifecycle.h"
#include "store/settings_store.h"
#include "ui/ftp_form.h"

namespace karvel {

/// The interval timer's work: unattended send runs, and the requests that other programs put into
/// the own settings file.
class Scheduler {
 public:
  Scheduler(FtpForm& form, SendRun& sendRun, PanelCommands& commands, WindowLifecycle& window,
            IniRedWrt& settings)
      : form_(form), sendRun_(sendRun), commands_(commands), window_(window), settings_(settings) {}

  /// One tick. The timer is off while it lasts, so ticks never overlap.
  void Timer1_Timer();

 private:
  void countTick();
  void showSettings(double request);
  [[nodiscard]] double request(const OwnKey& key);

  FtpForm& form_;
  SendRun& sendRun_;
  PanelCommands& commands_;
  WindowLifecycle& window_;
  IniRedWrt& settings_;
};

}  // namespace karvel
