#pragma once

#include "store/settings_store.h"
#include "ui/ftp_form.h"

namespace karvel {

/// Stores what the panel shows about the transfer.
class SendSettings {
 public:
  SendSettings(FtpForm& form, IniRedWrt& settings) : form_(form), settings_(settings) {}

  /// Writes destination, account and interval into the own settings file, withdraws the flags of
  /// reached destinations where the panel is incomplete, and presets the tick counter.
  void Save_FtpInfo();

  /// Sets the flag of a destination that has been reached.
  void confirm(const OwnKey& reachedFlag) { settings_.write(reachedFlag, "1"); }

 private:
  void writeDestination();
  void withdrawFlags();
  void presetTimer();

  FtpForm& form_;
  IniRedWrt& settings_;
};

}  // namespace karvel
