#pragma once

#include <algorithm>
#include <string>
#include <utility>

#include "platform/ftp_time_limits.h"
#include "platform/internet.h"
#include "platform/linux/internet/ftp_reply.h"
#include "platform/linux/internet/ftp_socket.h"

namespace karvel {

/// The control connection of an FTP session: commands one by one, and their replies.
///
/// What ends the connection (a failure, silence, a reply 421) is the result of that operation and
/// of every later one, which then sends nothing; reply() stays the one that went with it. Results
/// are 0 or the port's number. Operations wait within the limits and within the exchange.
class FtpControl {
 public:
  using ErrorNumber = Internet::ErrorNumber;

  explicit FtpControl(FtpTimeLimits limits) : limits_(limits) {}

  [[nodiscard]] const FtpTimeLimits& limits() const { return limits_; }
  /// All that follows, up to the next exchange, may take `limit` together.
  void beginExchange(FtpTimeLimits::Milliseconds limit) {
    exchangeEnd_ = Deadline::clock::now() + limit;
  }
  /// For a step that begins now and may take `limit`, within its exchange.
  [[nodiscard]] Deadline deadline(FtpTimeLimits::Milliseconds limit) const {
    return std::min(exchangeEnd_, Deadline::clock::now() + limit);
  }

  [[nodiscard]] ErrorNumber connect(const SocketAddresses& addresses);

  /// Sends a command line and waits for its last reply: kErrorExtended unless that is 2xx or 3xx.
  [[nodiscard]] ErrorNumber command(const std::string& line);
  /// Sends a command line without waiting.
  [[nodiscard]] ErrorNumber send(const std::string& line);
  /// Waits for the next reply, whatever it says.
  [[nodiscard]] ErrorNumber receiveReply();
  /// Waits for the next reply that is no preliminary one.
  [[nodiscard]] ErrorNumber receiveLastReply();

  [[nodiscard]] const FtpReply& reply() const { return reply_; }
  /// The texts of all replies since this was asked for last, each with a line end.
  [[nodiscard]] std::string takeReplies() { return std::exchange(replies_, {}); }
  /// Bytes of a reply have arrived with the one before.
  [[nodiscard]] bool hasInput() const { return !input_.empty(); }
  [[nodiscard]] const FtpSocket& socket() const { return socket_; }

  /// Closes the connection for that reason, which is also the result.
  ErrorNumber end(ErrorNumber reason);
  /// What has ended the connection; 0 while it stands.
  [[nodiscard]] ErrorNumber ended() const { return ended_; }

 private:
  /// Takes the lines that have arrived, up to the end of the reply. False when no FTP server would
  /// say that.
  [[nodiscard]] bool takeLines();

  const FtpTimeLimits limits_;
  Deadline exchangeEnd_;
  FtpSocket socket_;
  std::string input_;  ///< received, but not taken yet
  FtpReply reply_;
  std::string replies_;
  ErrorNumber ended_ = 0;
};

}  // namespace karvel
