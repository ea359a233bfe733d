#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <map>
#include <set>

#include "platform/ftp_time_limits.h"
#include "platform/internet.h"

namespace karvel {

/// What the library found. A folder is an entry with that attribute and no other; the time is taken
/// as it is, without regard to time zones, and cut to the second.
[[nodiscard]] Internet::FindData findDataOf(const WIN32_FIND_DATAA& found);

/// WinINet. Its byte-oriented functions pass names and accounts on as bytes, whatever the system's
/// code page is; it alone matters for local paths.
class WininetInternet : public Internet {
 public:
  Handle open() override;
  bool setOption(Handle root, std::uint32_t option, std::uint32_t milliseconds) override;
  Handle connect(Handle root, const Account& account, std::uint32_t flags) override;
  bool close(Handle handle) override;
  std::optional<std::string> currentDirectory(Handle session) override;
  bool setCurrentDirectory(Handle session, const std::string& folder) override;
  bool putFile(Handle session, const std::string& localPath, const std::string& remoteName,
               std::uint32_t transferType) override;
  bool renameFile(Handle session, const std::string& from, const std::string& to) override;
  bool deleteFile(Handle session, const std::string& remoteName) override;
  Handle findFirst(Handle session, const std::string& pattern, FindData& entry) override;
  bool findNext(Handle find, FindData& entry) override;
  ErrorNumber lastError() override { return lastError_; }
  Response lastResponse() override;
  /// Of the functions that the library is asked for by one call it keeps the last one's replies.
  std::string lastReplies() override { return lastResponse().text; }
  std::optional<std::string> features(Handle session) override;
  std::string systemMessage(ErrorNumber number) override;

 private:
  /// Calls the library with a root or a session, but breaks it off after `limit`: then, and for
  /// ever after with that handle, the call has failed with kErrorTimeout.
  bool call(Handle handle, std::chrono::milliseconds limit, const std::function<bool()>& function);
  /// Keeps the reason of a failed call, which any later call of the system may overwrite.
  bool note(bool succeeded);

  FtpTimeLimits limits_;
  std::set<Handle> brokenOff_;             ///< closed in a call that took too long
  std::map<Handle, Handle> enumerations_;  ///< the session of each
  ErrorNumber lastError_ = 0;
};

}  // namespace karvel
