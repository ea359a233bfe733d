#pragma once

#include "store/settings_store.h"
#include "ui/ftp_form.h"

namespace karvel {

/// Stores what the panel shows about the transfer.
class SendSettings {
 public:
  SendSettings(FtpForm& form, IniRedWrt& settings) : form_(form), settings_(settings) {}

  /// Writes destination, account and interval into the own settings file, withdraws the
  /// destination-reached flags where the panel is incomplete, and presets the tick counter.
  void Save_FtpInfo();

 private:
  void writeDestination();
  void withdrawFlags();
  void writeInterval();

  FtpForm& form_;
  IniRedWrt& settings_;
};

}  // namespace karvel
