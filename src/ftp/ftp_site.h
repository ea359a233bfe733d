#pragma once

#include <string>

#include "ftp/remote_listing.h"
#include "ftp/safe_upload.h"
#include "ftp/server_connection.h"
#include "ftp/server_list.h"
#include "ftp/session_holder.h"

namespace karvel {

/// Everything that a send run needs of an FTP server.
class FtpSite {
 public:
  FtpSite(FtpForm& form, Internet& internet, IniRedWrt& settings, Files& files, RunLog& log,
          const std::string& programFolder)
      : session_(form, internet),
        listing_(form, session_),
        servers_(files, settings, programFolder),
        connection_(form, session_, listing_, servers_, settings),
        upload_(form, session_, listing_, files, log) {}

  /// A new session object, not connected yet.
  void createSession() { session_.create(); }
  /// Releases it, and with it whatever is still open.
  void releaseSession() { session_.clsFtp.reset(); }

  // Only between the two:
  [[nodiscard]] bool Ftp_Open() { return connection_.Ftp_Open(); }
  void CloseSession() { session_.clsFtp->CloseSession(); }
  bool Ftp_PutFile(const std::string& folder, const std::string& name) {
    return upload_.Ftp_PutFile(folder, name);
  }
  void Ftp_DeleteListed(const std::string& name) { upload_.Ftp_DeleteListed(name); }

 private:
  SessionHolder session_;
  RemoteListing listing_;
  ServerList servers_;
  ServerConnection connection_;
  SafeUpload upload_;
};

}  // namespace karvel
