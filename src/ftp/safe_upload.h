#pragma once

#include <string>

#include "ftp/mc_win_ftp.h"
#include "ftp/remote_listing.h"
#include "platform/files.h"
#include "store/run_log.h"
#include "ui/ftp_form.h"

namespace karvel {

/// True when a file of that name is sent byte for byte; false when it is sent as text.
[[nodiscard]] bool IsBinaryFile(const std::string& name);

/// Uploads under a temporary name, so that the final name appears only with a complete file.
class SafeUpload {
 public:
  SafeUpload(FtpForm& form, McWinFTP& clsFtp, RemoteListing& listing, Files& files, RunLog& log);

  /// Sends `folder` (ending in the separator) + `name` into the session's current folder. True
  /// when it has its final name there. The outcome is shown and logged, except for a missing local
  /// file.
  bool Ftp_PutFile(const std::string& folder, const std::string& name);

  /// Deletes a remote file when the listing of the last refresh shows a file whose name begins
  /// with `name`.
  void Ftp_DeleteListed(const std::string& name);

 private:
  [[nodiscard]] bool Ftp_Rename(const std::string& target, const std::string& temp);
  [[nodiscard]] bool isListed(const std::string& name) const;
  bool reportFailure(const std::string& text);
  void report(const std::string& text);

  FtpForm& form_;
  McWinFTP& clsFtp_;
  RemoteListing& listing_;
  Files& files_;
  RunLog& log_;
};

}  // namespace karvel
