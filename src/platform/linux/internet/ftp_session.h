#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/linux/internet/ftp_listing.h"
#include "platform/linux/internet/ftp_transfer.h"
#include "platform/linux/internet/upload_reader.h"

namespace karvel {

/// One FTP session: one control connection with one login.
///
/// Every operation sends just the commands that it names and blocks until their last reply or until
/// a limit. Results are 0 or the port's number; reply() is the last one of the server. After a
/// failed transfer the session goes on where its replies still belong to its commands; what has
/// ended it is the result of every later operation. No text may hold CR, LF or NUL.
class FtpSession {
 public:
  using ErrorNumber = Internet::ErrorNumber;

  FtpSession(FtpTimeLimits limits, bool passive) : control_(limits), passive_(passive) {}
  /// Says QUIT, if the session goes on, and waits a moment for the answer.
  ~FtpSession();

  /// Looks the host up and connects, then USER and, where the server asks for it, PASS.
  [[nodiscard]] ErrorNumber logIn(const std::string& host, std::uint16_t port,
                                  const AddressLookup& lookup, const std::string& user,
                                  const std::string& password);

  /// One command; any reply from 200 to 399 is success.
  [[nodiscard]] ErrorNumber command(const std::string& line);
  /// RNFR and RNTO.
  [[nodiscard]] ErrorNumber rename(const std::string& from, const std::string& to);
  /// TYPE unless it is set, PASV or PORT (for IPv6 EPSV or EPRT), STOR.
  [[nodiscard]] ErrorNumber upload(const std::string& remoteName, UploadReader& reader);
  /// Likewise with LIST, and an argument unless it is empty; the listing is added to `listing`.
  [[nodiscard]] ErrorNumber list(const std::string& argument, FtpListing& listing);

  [[nodiscard]] const FtpReply& reply() const { return control_.reply(); }
  /// See FtpControl.
  [[nodiscard]] std::string takeReplies() { return control_.takeReplies(); }

 private:
  /// TYPE unless the server has been told, then the transfer itself.
  [[nodiscard]] ErrorNumber transfer(TransferType type, const std::string& command, short direction,
                                     const MoveData& move);

  FtpControl control_;
  const bool passive_;
  std::optional<TransferType> type_;  ///< that the server has been told
};

}  // namespace karvel
