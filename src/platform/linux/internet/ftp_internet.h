#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/internet.h"
#include "platform/linux/internet/ftp_listing.h"
#include "platform/linux/internet/ftp_session.h"

namespace karvel {

/// The internet port as an FTP client of its own. One thread at a time.
///
/// Answers to what the port leaves open: a host that is missing or can be none is a name that does
/// not resolve; port 0 is 21; closing a root or a session closes what was opened with it; a new
/// enumeration of a session replaces its former one.
class FtpInternet : public Internet {
 public:
  explicit FtpInternet(AddressLookup lookup = addressesOf) : lookup_(std::move(lookup)) {}

  [[nodiscard]] Handle open() override;
  bool setOption(Handle root, std::uint32_t option, std::uint32_t milliseconds) override;
  [[nodiscard]] Handle connect(Handle root, const Account& account, std::uint32_t flags) override;
  [[nodiscard]] bool close(Handle handle) override;

  [[nodiscard]] std::optional<std::string> currentDirectory(Handle session) override;
  [[nodiscard]] bool setCurrentDirectory(Handle session, const std::string& folder) override;
  [[nodiscard]] bool putFile(Handle session, const std::string& localPath,
                             const std::string& remoteName, std::uint32_t transferType) override;
  [[nodiscard]] bool renameFile(Handle session, const std::string& from,
                                const std::string& to) override;
  [[nodiscard]] bool deleteFile(Handle session, const std::string& remoteName) override;

  [[nodiscard]] Handle findFirst(Handle session, const std::string& pattern,
                                 FindData& entry) override;
  [[nodiscard]] bool findNext(Handle find, FindData& entry) override;

  [[nodiscard]] ErrorNumber lastError() override { return lastError_; }
  [[nodiscard]] Response lastResponse() override { return lastResponse_; }
  [[nodiscard]] std::string lastReplies() override { return lastReplies_; }
  [[nodiscard]] std::optional<std::string> features(Handle session) override;
  [[nodiscard]] std::string systemMessage(ErrorNumber number) override;

 private:
  struct Session {
    Handle root;
    std::unique_ptr<FtpSession> ftp;
  };
  struct Enumeration {
    Handle session;
    FtpListing listing;
  };

  bool fail(ErrorNumber error);
  /// Keeps what the server said and the outcome of the call.
  bool conclude(FtpSession& ftp, ErrorNumber error);
  /// The session of that handle; without one the call has failed.
  Session* find(Handle session);
  /// One command of a verb and a name.
  bool command(Handle session, const std::string& verb, const std::string& name);
  void closeEnumerationsOf(Handle session);
  void closeSessionsOf(Handle root);
  bool nextEntry(FtpListing& listing, FindData& entry);

  AddressLookup lookup_;
  Handle lastHandle_ = 0;
  std::map<Handle, FtpTimeLimits> roots_;
  std::map<Handle, Session> sessions_;
  std::map<Handle, Enumeration> enumerations_;
  ErrorNumber lastError_ = 0;
  Response lastResponse_;
  std::string lastReplies_;
};

}  // namespace karvel
