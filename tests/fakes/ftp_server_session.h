#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "fakes/scripted_ftp_server.h"
#include "fakes/test_socket.h"

namespace karvel {

/// One client of a ScriptedFtpServer, from greeting to end.
class FtpServerSession {
 public:
  FtpServerSession(ScriptedFtpServer& server, TestSocket control);

  /// Returns when the client is gone, has been dropped, or the server stops.
  void run();

 private:
  using Handler = std::string (FtpServerSession::*)(const std::string& argument);
  static const std::map<std::string, Handler>& handlers();

  std::optional<std::string> readLine();
  void handle(const std::string& line);
  /// Faults that come instead of the command; true when there was one.
  bool misbehaveBefore();
  void handleWell(const std::string& command, const std::string& argument);
  std::string replyTo(const std::string& command, const std::string& argument);

  // The commands; each returns its last reply.
  std::string user(const std::string& argument);
  std::string pass(const std::string& argument);
  std::string pwd(const std::string& argument);
  std::string cwd(const std::string& argument);
  std::string pasv(const std::string& argument);
  std::string epsv(const std::string& argument);
  std::string port(const std::string& argument);
  std::string eprt(const std::string& argument);
  std::string list(const std::string& argument);
  std::string stor(const std::string& argument);
  std::string dele(const std::string& argument);
  std::string rnfr(const std::string& argument);
  std::string rnto(const std::string& argument);

  /// Opens the port of a passive transfer; its number.
  int openPassivePort();
  /// Announces the transfer and connects for it; invalid when the client does not.
  TestSocket openData();
  /// Sends or receives up to the byte at which the script ends the transfer; both return the last
  /// reply.
  std::string sendData(std::string_view bytes);
  std::string receiveData(std::string& bytes);
  [[nodiscard]] std::size_t transferLimit() const;
  std::string endTransfer(TestSocket data, std::size_t bytes);

  void say(const std::string& reply);
  /// False when the client or the server is gone before the end.
  bool sendAll(const TestSocket& socket, std::string_view bytes);
  void babble();
  void waitForEnd();
  void pause(std::chrono::milliseconds time) const;
  [[nodiscard]] bool goesOn() const;
  [[nodiscard]] std::string pathOf(const std::string& argument) const;

  ScriptedFtpServer& server_;
  TestSocket control_;
  std::string received_;
  FtpFault fault_;
  std::string folder_ = "/";
  std::string user_;
  std::string renameFrom_;
  bool loggedIn_ = false;
  TestSocket passive_;
  int activePort_ = 0;
  TestSocket stranger_;
};

}  // namespace karvel
