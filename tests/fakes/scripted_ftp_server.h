#pragma once

#include <atomic>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "fakes/ftp_fault.h"
#include "fakes/remote_tree.h"
#include "fakes/test_socket.h"

namespace karvel {

/// An FTP server for tests, in this process, on a free loopback port, with its files in memory.
///
/// It does what it is asked unless its script says otherwise: on("STOR", 2, FtpFault::refuse("552
/// Full.")) refuses the second STOR. The greeting is scripted as the command kGreeting. One client
/// is served at a time. Its destructor ends the server, whatever state a client is in.
class ScriptedFtpServer {
 public:
  static constexpr const char* kGreeting = "(greeting)";
  static constexpr int kEvery = 0;

  struct Options {
    TestSocket::Host host = TestSocket::Host::kIpv4;
    std::string user = "shop";
    std::string password = "secret";
  };

  ScriptedFtpServer();
  explicit ScriptedFtpServer(Options options);
  ScriptedFtpServer(const ScriptedFtpServer&) = delete;
  ScriptedFtpServer& operator=(const ScriptedFtpServer&) = delete;
  ~ScriptedFtpServer();

  [[nodiscard]] int port() const { return port_; }
  [[nodiscard]] const Options& options() const { return options_; }
  RemoteTree& tree() { return tree_; }

  /// Sets what happens at the n-th occurrence of a command since the server began, counted from 1,
  /// or at every one.
  void on(const std::string& command, int occurrence, FtpFault fault);
  /// Forgets the script and the counts.
  void behave();
  /// Gives this text for LIST instead of what is in the folder.
  void setListing(std::string text);

  /// The command lines as they arrived, oldest first, without the arguments of PORT and EPRT,
  /// which differ each time.
  [[nodiscard]] std::vector<std::string> transcript() const;
  void clearTranscript();
  /// The number of control connections so far.
  [[nodiscard]] int connections() const { return connections_; }

 private:
  friend class FtpServerSession;

  void serve();
  FtpFault recordAndChoose(const std::string& command, const std::string& line);
  [[nodiscard]] std::optional<std::string> listing() const;

  const Options options_;
  TestSocket listener_;
  int port_ = 0;
  RemoteTree tree_;
  std::atomic<bool> stopping_ = false;
  std::atomic<int> connections_ = 0;

  mutable std::mutex mutex_;
  std::map<std::pair<std::string, int>, FtpFault> script_;
  std::map<std::string, int> counts_;
  std::vector<std::string> transcript_;
  std::optional<std::string> listing_;

  std::thread thread_;
};

}  // namespace karvel
