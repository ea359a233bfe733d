#pragma once

#include <memory>

#include "ftp/mc_win_ftp.h"
#include "platform/internet.h"
#include "ui/ftp_form.h"

namespace karvel {

/// The FTP session of the current send run, and what the main form hears of its failures.
class SessionHolder {
 public:
  SessionHolder(FtpForm& form, Internet& internet) : form_(form), internet_(internet) {}

  std::unique_ptr<McWinFTP> clsFtp;  ///< present only during a run

  /// Puts a new session object into clsFtp.
  void create();

 private:
  void clsFtp_FTPFrr(std::int32_t ErrNumber, const std::string& ErrString);

  FtpForm& form_;
  Internet& internet_;
};

}  // namespace karvel
