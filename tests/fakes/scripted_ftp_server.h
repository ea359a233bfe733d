#pragma once

#include <chrono>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "fakes/test_socket.h"

namespace karvel {

/// What a scripted FTP server does wrong with one command.
struct FtpFault {
  enum Kind {
    kNone,
    kRefuse,          ///< instead of the command this text is the answer
    kDrop,            ///< instead of the command the control connection ends
    kReset,           ///< likewise, with a reset
    kStall,           ///< no answer ever; the connection stays
    kEndlessReply,    ///< as the answer this text again and again, with that pause
    kDelay,           ///< the command is carried out that much later
    kReplaceReply,    ///< this text is the last reply
    kSplitReply,      ///< the replies arrive byte by byte, with that pause
    kDropAfter,       ///< after the answer the control connection ends
    kListing,         ///< this text instead of what is in the folder
    kEndlessListing,  ///< this text again and again, with that pause
    kCutTransfer,     ///< the data connection ends after so many bytes; the server then says so
    kDropTransfer,    ///< both connections end after so many bytes of data
    kStallTransfer,   ///< the server does nothing more after so many bytes of data
    kLateConnection,  ///< an active transfer is announced that much earlier than it is connected
    kRefusedPort,     ///< a passive port that refuses connections
    kSilentPort,      ///< one that does not answer
    kForeignAddress,  ///< one that is told with the address of another machine
    kStranger,        ///< another machine connects to an active port before the server does
  };

  Kind kind = kNone;
  std::string text{};
  std::chrono::milliseconds time{0};
  std::size_t bytes = std::string::npos;
};

/// An FTP server for tests, in this process, on a free loopback port, with its files in memory.
///
/// It does what it is asked unless its script says otherwise: on("STOR", 2, {FtpFault::kRefuse,
/// "552 Full."}) refuses the second STOR. The greeting counts as a command, kGreeting. One client
/// is served at a time. Its destructor ends the server, whatever state a client is in.
///
/// Paths are absolute and parted by "/"; that of the login folder is "".
class ScriptedFtpServer {
 public:
  using Files = std::map<std::string, std::string>;  ///< contents by name

  static constexpr const char* kUser = "shop";
  static constexpr const char* kPassword = "secret";
  static constexpr const char* kGreeting = "(greeting)";
  static constexpr int kEvery = 0;

  explicit ScriptedFtpServer(const char* host = TestSocket::kIpv4);

  [[nodiscard]] const char* host() const { return host_; }
  [[nodiscard]] int port() const { return listener_.port(); }

  /// Scripts the n-th occurrence of a command, counted from 1, or kEvery one.
  void on(const std::string& command, int occurrence, FtpFault fault);
  /// Forgets the script and the counts.
  void behave();

  /// Adds a file, or without content a folder, and the folders above it.
  void add(const std::string& path, std::optional<std::string> content = {});
  /// What files are directly in a folder.
  [[nodiscard]] Files files(const std::string& folder = "") const;

  /// The commands since this was asked for last, the greeting too, as they arrived, but without
  /// the arguments of PORT and EPRT, which differ each time.
  std::vector<std::string> takeTranscript();

 private:
  class Session;

  const char* const host_;
  TestSocket listener_ = TestSocket::listen(host_);
  // Of the data of all passive and all active transfers: each has one port for the server's life.
  TestSocket passive_ = TestSocket::listen(host_);
  TestSocket source_ = TestSocket::hold(host_);

  mutable std::mutex mutex_;
  std::map<std::pair<std::string, int>, FtpFault> script_;
  std::map<std::string, int> counts_;
  std::vector<std::string> transcript_;
  /// By path: of a file its content, of a folder nothing.
  std::map<std::string, std::optional<std::string>> tree_;

  std::jthread thread_;  ///< serves; it ends before what it uses
};

}  // namespace karvel
