#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "fakes/scripted_ftp_server.h"
#include "platform/windows/internet/wininet_internet.h"

namespace karvel {

/// The program's own FTP library beside a scripted server.
class FtpProbe {
 public:
  explicit FtpProbe(std::chrono::milliseconds limit, const char* host = TestSocket::kIpv4);

  ScriptedFtpServer& server() { return *server_; }
  WininetInternet& internet() { return internet_; }
  [[nodiscard]] Internet::Handle session() const { return session_; }

  /// Logs in, in a session of a new root: as each send run does.
  bool connect(std::uint32_t flags = Internet::kFlagPassive);
  void disconnect();
  /// The names of the current folder, with commas, or the error number.
  std::string list();
  /// Ends the server, and so what waits for it.
  void endServer() { server_.reset(); }

 private:
  std::chrono::milliseconds limit_;
  std::unique_ptr<ScriptedFtpServer> server_;
  Internet::Account account_;
  WininetInternet internet_;
  Internet::Handle root_ = 0;
  Internet::Handle session_ = 0;
};

/// Commands that a server has received, in one line.
std::string joined(const std::vector<std::string>& commands);

/// Number and text of the last failure.
std::string failureOf(Internet& internet);

}  // namespace karvel
