#pragma once

#include <functional>
#include <optional>

#include "send/panel_commands.h"
#include "send/send_run.h"
#include "shell/window_lifecycle.h"
#include "store/settings_store.h"
#include "ui/ftp_form.h"

namespace karvel {

/// A send interval as the own key "FTP TIME" names it, 1 to 4.
struct SendInterval {
  int option;              ///< index of the panel's option button
  std::int16_t threshold;  ///< ticks from one unattended send to the next
  std::int16_t
      startTimerCount;  ///< ticks counted as passed at start, so that the first comes early

  /// The interval that a stored value selects; empty for "manual only".
  static std::optional<SendInterval> of(const std::string& ftpTime);
};

/// The interval timer's work: unattended send runs, and the requests "FTP EXIT" and "FTP INIT" that
/// others put into the own settings file.
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
  [[nodiscard]] double request(const char* key);

  FtpForm& form_;
  SendRun& sendRun_;
  PanelCommands& commands_;
  WindowLifecycle& window_;
  IniRedWrt& settings_;
};

}  // namespace karvel
