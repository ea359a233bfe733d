#pragma once

#include <string>
#include <string_view>

#include "ftp/mc_win_ftp.h"
#include "ftp/remote_listing.h"
#include "ftp/server_list.h"
#include "store/settings_store.h"
#include "ui/ftp_form.h"

namespace karvel {

/// Takes a fresh session to the target folder.
class ServerConnection {
 public:
  ServerConnection(FtpForm& form, McWinFTP& clsFtp, RemoteListing& listing, ServerList& servers,
                   IniRedWrt& settings);

  /// Logs in with the account of the panel (user's own site) or of the ticket application's
  /// settings (service site), and walks down the target folder level by level. True: the session
  /// stands in that folder and the listing shows it. False: no session is open; the status line
  /// says why, unless the account is incomplete.
  [[nodiscard]] bool Ftp_Open();

 private:
  [[nodiscard]] bool takeOwnAccount();
  [[nodiscard]] bool takeServiceAccount();
  void logInAs(const std::string& user, const std::string& customerCode);
  [[nodiscard]] bool enterFolder(std::string_view path);
  [[nodiscard]] bool enterLevel(std::string_view name);
  bool fail(const std::string& text);

  FtpForm& form_;
  McWinFTP& clsFtp_;
  RemoteListing& listing_;
  ServerList& servers_;
  IniRedWrt& settings_;
};

}  // namespace karvel
