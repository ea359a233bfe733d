#pragma once

#include <string>

#include "ftp/mc_win_ftp.h"
#include "ftp/remote_listing.h"
#include "ftp/safe_upload.h"
#include "ftp/server_connection.h"
#include "ftp/server_list.h"

namespace karvel {

/// What an FTP session works with; it outlives every session.
struct FtpSite {
  FtpForm& form;
  Internet& internet;
  IniRedWrt& settings;
  Files& files;
  RunLog& log;
  std::string programFolder;
};

/// One send run at an FTP server: the session object and all that works on it. Not connected when
/// made; its end closes whatever is still open.
class SiteSession {
 public:
  explicit SiteSession(const FtpSite& site)
      : clsFtp_(site.internet,
                [&form = site.form](std::int32_t ErrNumber, const std::string& ErrString) {
                  form.clsFtp_FTPFrr(ErrNumber, ErrString);
                }),
        listing_(site.form, clsFtp_),
        servers_(site.files, site.settings, site.programFolder),
        connection_(site.form, clsFtp_, listing_, servers_, site.settings),
        upload_(site.form, clsFtp_, listing_, site.files, site.log) {}

  [[nodiscard]] bool Ftp_Open() { return connection_.Ftp_Open(); }
  void CloseSession() { clsFtp_.CloseSession(); }
  bool Ftp_PutFile(const std::string& folder, const std::string& name) {
    return upload_.Ftp_PutFile(folder, name);
  }
  void Ftp_ListFiles() { listing_.Ftp_ListFiles(); }
  void Ftp_DeleteListed(const std::string& name) { upload_.Ftp_DeleteListed(name); }

 private:
  McWinFTP clsFtp_;
  RemoteListing listing_;
  ServerList servers_;
  ServerConnection connection_;
  SafeUpload upload_;
};

}  // namespace karvel
