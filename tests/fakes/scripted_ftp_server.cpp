#include "fakes/scripted_ftp_server.h"

#include <algorithm>
#include <cstdio>

namespace karvel {
namespace {

using std::chrono::milliseconds;
using enum FtpFault::Kind;

constexpr milliseconds kSlice{10};
constexpr milliseconds kDataWait{1000};
constexpr std::size_t kPiece = 8 * 1024;
constexpr int kHighestPort = 60000;  ///< that the program takes from its settings

std::string parentOf(const std::string& path) {
  return path.substr(0, path.rfind('/'));
}

}  // namespace

/// One client of the server, from greeting to end.
class ScriptedFtpServer::Session {
 public:
  Session(ScriptedFtpServer& server, TestSocket control, const std::stop_token& stop)
      : server_(server), control_(std::move(control)), stop_(stop) {}

  /// Returns when the client is gone, has been dropped, or the server stops.
  void run() {
    for (std::optional<std::string> line = kGreeting; line; line = readLine()) handle(*line);
  }

 private:
  std::optional<std::string> readLine() {
    auto end = received_.find("\r\n");
    for (; end == std::string::npos; end = received_.find("\r\n")) {
      const std::string bytes = receive(control_);
      if (bytes.empty()) return std::nullopt;
      received_ += bytes;
    }
    std::string line = received_.substr(0, end);
    received_.erase(0, end + 2);
    return line;
  }

  void handle(const std::string& line) {
    const auto blank = line.find(' ');
    const std::string command = line.substr(0, blank);
    argument_ = blank == std::string::npos ? "" : line.substr(blank + 1);
    fault_ = recordAndChoose(command, line);
    if (fault_.kind == kRefuse) return say(fault_.text);
    if (fault_.kind == kDrop) return control_.close();
    if (fault_.kind == kReset) return control_.reset();
    if (fault_.kind == kStall) return waitForEnd();
    if (fault_.kind == kEndlessReply) return repeat(control_);
    if (fault_.kind == kDelay) pause();
    const std::string reply = replyTo(command);
    say(fault_.kind == kReplaceReply ? fault_.text : reply);
    if (fault_.kind == kDropAfter) control_.close();
  }

  FtpFault recordAndChoose(const std::string& command, const std::string& line) {
    const std::lock_guard lock(server_.mutex_);
    server_.transcript_.push_back(command == "PORT" || command == "EPRT" ? command : line);
    const auto& script = server_.script_;
    auto found = script.find({command, ++server_.counts_[command]});
    if (found == script.end()) found = script.find({command, kEvery});
    return found == script.end() ? FtpFault() : found->second;
  }

  std::string replyTo(const std::string& command) {
    if (command == kGreeting) return "220 Ready.";
    if (command == "QUIT") return "221 Goodbye.";
    if (command == "USER") {
      user_ = argument_;
      return "331 Password, please.";
    }
    if (command == "PASS") {
      loggedIn_ = user_ == kUser && argument_ == kPassword;
      return loggedIn_ ? "230 Welcome." : "530 Login incorrect.";
    }
    if (!loggedIn_) return "530 Not logged in.";
    if (command == "TYPE") return "200 Type set.";
    if (command == "PWD") return currentFolder();
    if (command == "PASV" || command == "EPSV") return passive(command == "EPSV");
    if (command == "PORT") return active("%*d,%*d,%*d,%*d,%d,%d");
    if (command == "EPRT") return active("|%*d|%*[^|]|%d|");
    if (command == "LIST") return transfer(&Session::sendListing);
    if (command == "STOR") return transfer(&Session::store);
    return changeTree(command);
  }

  std::string currentFolder() {
    std::string quoted;
    for (const char c : folder_.empty() ? "/" : folder_) quoted.append(c == '"' ? 2 : 1, c);
    return "257 \"" + quoted + "\" is the current folder.";
  }

  std::string passive(bool extended) {
    const int port = passivePort();
    if (extended) return "229 Entering Extended Passive Mode (|||" + std::to_string(port) + "|)";
    const char* const host = fault_.kind == kForeignAddress ? "10,255,255,1" : "127,0,0,1";
    return std::string("227 Entering Passive Mode (") + host + "," + std::to_string(port / 256) +
           "," + std::to_string(port % 256) + ").";
  }

  int passivePort() {
    activePort_ = 0;
    const char* const host = server_.host_;
    if (fault_.kind == kRefusedPort) return TestSocket::listen(host).port();  // closed again
    if (fault_.kind == kSilentPort) return (other_ = TestSocket::listenSilently(host)).port();
    // Connections that were made for a transfer which did not take place.
    while (server_.passive_.accept(milliseconds{0}).valid()) continue;
    return server_.passive_.port();
  }

  std::string active(const char* format) {
    int high = 0;
    int low = 0;
    const int count = std::sscanf(argument_.c_str(), format, &high, &low);
    if (count < 1) return "501 Bad address.";
    activePort_ = count == 1 ? high : high * 256 + low;
    if (fault_.kind == kStranger) {
      other_ = TestSocket::connect(server_.host_, activePort_, TestSocket::kOther);
    }
    return "200 Port set.";
  }

  std::string transfer(void (Session::*move)(TestSocket& data)) {
    TestSocket data = openData();
    if (!data.valid()) return "425 No data connection.";
    (this->*move)(data);
    if (fault_.kind == kStallTransfer) waitForEnd();
    data.close();
    if (fault_.kind == kDropTransfer) control_.close();
    return fault_.kind == kCutTransfer ? "426 Cut off." : "226 Transferred.";
  }

  /// Announces the transfer and connects for it; invalid when the client does not.
  TestSocket openData() {
    TestSocket data;
    if (activePort_ == 0) data = server_.passive_.accept(kDataWait);
    say("150 Opening data connection.");
    if (fault_.kind == kLateConnection) pause();
    if (activePort_ == 0) return data;
    return TestSocket::connect(server_.host_, activePort_, server_.host_, server_.source_.port());
  }

  void sendListing(TestSocket& data) {
    if (fault_.kind == kEndlessListing) repeat(data);
    const std::string listing = fault_.kind == kListing ? fault_.text : this->listing();
    sendAll(data, listing.substr(0, fault_.bytes));
  }

  std::string listing() {
    const std::lock_guard lock(server_.mutex_);
    std::string lines;
    for (const auto& [path, content] : server_.tree_) {
      if (parentOf(path) != folder_) continue;
      lines += (content ? "-rw-r--r-- 1 ftp ftp " : "drwxr-xr-x 2 ftp ftp ") +
               std::to_string(content ? content->size() : 0) + " Jan 01  2024 " +
               path.substr(folder_.size() + 1) + "\r\n";
    }
    return lines;
  }

  /// As on a real server, a transfer that breaks off leaves what has arrived.
  void store(TestSocket& data) {
    std::string content;
    std::string piece;
    do {
      piece = receive(data, std::min(kPiece, fault_.bytes - content.size()));
      content += piece;
    } while (!piece.empty() && content.size() < fault_.bytes);
    server_.add(pathOf(argument_), content);
  }

  /// The commands that only look at the files, or change what is there.
  std::string changeTree(const std::string& command) {
    const std::lock_guard lock(server_.mutex_);
    auto& tree = server_.tree_;
    const std::string path = argument_ == ".." ? parentOf(folder_) : pathOf(argument_);
    const auto found = tree.find(path);
    const bool isFile = found != tree.end() && found->second;
    if (command == "CWD") {
      if (isFile || (found == tree.end() && !path.empty())) return "550 No such folder.";
      folder_ = path;
      return "250 Changed.";
    }
    if (command == "RNTO") {
      const auto node = tree.extract(from_);
      if (node.empty()) return "503 RNFR first.";
      tree[path] = node.mapped();
      return "250 Renamed.";
    }
    if (command == "RNFR" && isFile) {
      from_ = path;
      return "350 And the new name?";
    }
    if (command == "DELE" && isFile) {
      tree.erase(found);
      return "250 Deleted.";
    }
    return "550 No such file, or no such command.";
  }

  void say(const std::string& reply) {
    const std::string bytes = reply + "\r\n";
    const std::size_t piece = fault_.kind == kSplitReply ? 1 : bytes.size();
    for (std::size_t i = 0; i < bytes.size(); i += piece) {
      sendAll(control_, bytes.substr(i, piece));
      if (fault_.kind == kSplitReply) pause();
    }
  }

  /// False when the client or the server is gone before the end.
  bool sendAll(const TestSocket& socket, std::string_view bytes) {
    while (goesOn() && !bytes.empty()) {
      if (!socket.waitWritable(kSlice)) continue;
      const std::size_t sent = socket.send(bytes.substr(0, kPiece));
      if (sent == 0) return false;
      bytes.remove_prefix(sent);
    }
    return bytes.empty();
  }

  /// What comes next; empty when the client or the server is gone. What the client has closed is
  /// reset, which loses nothing then, and no port is kept for a while.
  std::string receive(TestSocket& socket, std::size_t limit = kPiece) {
    while (goesOn()) {
      if (!socket.waitReadable(kSlice)) continue;
      std::string bytes = socket.receive(limit);
      if (bytes.empty()) socket.reset();
      return bytes;
    }
    return {};
  }

  void repeat(const TestSocket& socket) {
    while (sendAll(socket, fault_.text)) pause();
  }

  void waitForEnd() {
    while (!receive(control_).empty()) continue;
  }

  void pause() {
    const auto end = std::chrono::steady_clock::now() + fault_.time;
    while (goesOn() && std::chrono::steady_clock::now() < end) {
      std::this_thread::sleep_for(std::min(kSlice, fault_.time));
    }
  }

  [[nodiscard]] bool goesOn() const { return control_.valid() && !stop_.stop_requested(); }

  [[nodiscard]] std::string pathOf(const std::string& argument) const {
    return argument.starts_with('/') ? argument : folder_ + "/" + argument;
  }

  ScriptedFtpServer& server_;
  TestSocket control_;
  const std::stop_token& stop_;
  std::string received_;
  std::string argument_;  ///< of the command that is handled
  FtpFault fault_;        ///< likewise
  bool loggedIn_ = false;
  std::string user_;
  std::string folder_;
  std::string from_;    ///< what is renamed
  int activePort_ = 0;  ///< 0: the next transfer is passive
  TestSocket other_;    ///< a silent port, or another machine's connection
};

ScriptedFtpServer::ScriptedFtpServer(const char* host) : host_(host) {
  while (port() > kHighestPort) listener_ = TestSocket::listen(host);
  thread_ = std::jthread([this](const std::stop_token& stop) {
    while (!stop.stop_requested()) {
      TestSocket control = listener_.accept(kSlice);
      if (control.valid()) Session(*this, std::move(control), stop).run();
    }
  });
}

void ScriptedFtpServer::on(const std::string& command, int occurrence, FtpFault fault) {
  const std::lock_guard lock(mutex_);
  script_[{command, occurrence}] = std::move(fault);
}

void ScriptedFtpServer::behave() {
  const std::lock_guard lock(mutex_);
  script_.clear();
  counts_.clear();
}

void ScriptedFtpServer::add(const std::string& path, std::optional<std::string> content) {
  const std::lock_guard lock(mutex_);
  for (auto above = parentOf(path); !above.empty(); above = parentOf(above)) tree_[above];
  tree_[path] = std::move(content);
}

ScriptedFtpServer::Files ScriptedFtpServer::files(const std::string& folder) const {
  const std::lock_guard lock(mutex_);
  Files files;
  for (const auto& [path, content] : tree_) {
    if (content && parentOf(path) == folder) files[path.substr(folder.size() + 1)] = *content;
  }
  return files;
}

std::vector<std::string> ScriptedFtpServer::takeTranscript() {
  const std::lock_guard lock(mutex_);
  return std::exchange(transcript_, {});
}

}  // namespace karvel
