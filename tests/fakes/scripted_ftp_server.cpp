#include "fakes/scripted_ftp_server.h"

#include <algorithm>
#include <cstdio>

namespace karvel {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kSlice{10};
constexpr milliseconds kDataWait{1000};
constexpr std::size_t kPiece = 8 * 1024;
constexpr int kHighestPort = 60000;  ///< that the program takes from its settings

TestSocket listenWithinReach(const char* host) {
  TestSocket listener = TestSocket::listen(host);
  while (listener.port() > kHighestPort) listener = TestSocket::listen(host);
  return listener;
}

std::string parentOf(const std::string& path) {
  return path.substr(0, path.rfind('/'));
}

}  // namespace

/// One client of the server, from greeting to end.
class ScriptedFtpServer::Session {
 public:
  Session(ScriptedFtpServer& server, TestSocket control)
      : server_(server), control_(std::move(control)) {}

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
    if (misbehaves()) return;
    const std::string reply = replyTo(command);
    say(fault_.kind == FtpFault::kReplaceReply ? fault_.text : reply);
    if (fault_.kind == FtpFault::kDropAfter) control_.close();
  }

  FtpFault recordAndChoose(const std::string& command, const std::string& line) {
    const std::lock_guard lock(server_.mutex_);
    server_.transcript_.push_back(command == "PORT" || command == "EPRT" ? command : line);
    const auto& script = server_.script_;
    auto found = script.find({command, ++server_.counts_[command]});
    if (found == script.end()) found = script.find({command, kEvery});
    return found == script.end() ? FtpFault() : found->second;
  }

  /// Faults that come instead of the command; true when there was one.
  bool misbehaves() {
    switch (fault_.kind) {
      case FtpFault::kRefuse:
        say(fault_.text);
        return true;
      case FtpFault::kDrop:
        control_.close();
        return true;
      case FtpFault::kReset:
        control_.reset();
        return true;
      case FtpFault::kStall:
        waitForEnd();
        return true;
      case FtpFault::kEndlessReply:
        repeat(control_);
        control_.close();
        return true;
      case FtpFault::kDelay:
        pause();
        return false;
      default:
        return false;
    }
  }

  std::string replyTo(const std::string& command) {
    if (command == kGreeting) return "220 Ready.";
    if (command == "QUIT") return "221 Goodbye.";
    if (command == "USER") return user();
    if (command == "PASS") return logIn();
    if (!loggedIn_) return "530 Not logged in.";
    if (command == "TYPE") return "200 Type set.";
    if (command == "PWD") return currentFolder();
    if (command == "CWD") return changeFolder();
    if (command == "PASV") return passive();
    if (command == "EPSV") return extendedPassive();
    if (command == "PORT") return active("%*d,%*d,%*d,%*d,%d,%d");
    if (command == "EPRT") return active("|%*d|%*[^|]|%d|");
    if (command == "LIST") return sendListing();
    if (command == "STOR") return store();
    if (command == "DELE") return remove();
    if (command == "RNFR") return renameFrom();
    if (command == "RNTO") return renameTo();
    return "502 Unknown command.";
  }

  std::string user() {
    user_ = argument_;
    return "331 Password, please.";
  }

  std::string logIn() {
    loggedIn_ = user_ == kUser && argument_ == kPassword;
    return loggedIn_ ? "230 Welcome." : "530 Login incorrect.";
  }

  std::string currentFolder() {
    std::string quoted;
    for (const char c : folder_.empty() ? "/" : folder_) quoted.append(c == '"' ? 2 : 1, c);
    return "257 \"" + quoted + "\" is the current folder.";
  }

  std::string changeFolder() {
    const std::string path = argument_ == ".." ? parentOf(folder_) : pathOf(argument_);
    const std::lock_guard lock(server_.mutex_);
    const auto found = server_.tree_.find(path);
    const bool exists = found != server_.tree_.end() && !found->second;
    if (!exists && !path.empty()) return "550 No such folder.";
    folder_ = path;
    return "250 Changed.";
  }

  std::string passive() {
    const char* const host =
        fault_.kind == FtpFault::kForeignAddress ? "10,255,255,1," : "127,0,0,1,";
    const int port = passivePort();
    return "227 Entering Passive Mode (" + std::string(host) + std::to_string(port / 256) + "," +
           std::to_string(port % 256) + ").";
  }

  std::string extendedPassive() {
    return "229 Entering Extended Passive Mode (|||" + std::to_string(passivePort()) + "|)";
  }

  int passivePort() {
    activePort_ = 0;
    if (fault_.kind == FtpFault::kRefusedPort) return TestSocket::listen(server_.host_).port();
    if (fault_.kind == FtpFault::kSilentPort) {
      other_ = TestSocket::listenSilently(server_.host_);
      return other_.port();
    }
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
    if (fault_.kind == FtpFault::kStranger) {
      other_ = TestSocket::connect(server_.host_, activePort_, TestSocket::kOther);
    }
    return "200 Port set.";
  }

  std::string sendListing() {
    TestSocket data = openData();
    if (!data.valid()) return "425 No data connection.";
    if (fault_.kind == FtpFault::kEndlessListing) repeat(data);
    const std::string listing = fault_.kind == FtpFault::kListing ? fault_.text : this->listing();
    sendAll(data, listing.substr(0, fault_.bytes));
    return endTransfer(std::move(data));
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

  std::string store() {
    // As on a real server, a transfer that breaks off leaves what has arrived.
    server_.addFile(pathOf(argument_), "");
    TestSocket data = openData();
    if (!data.valid()) return "425 No data connection.";
    std::string content;
    while (content.size() < fault_.bytes) {
      const std::string piece = receive(data, std::min(kPiece, fault_.bytes - content.size()));
      if (piece.empty()) break;
      content += piece;
    }
    server_.addFile(pathOf(argument_), content);
    return endTransfer(std::move(data));
  }

  std::string remove() {
    const std::lock_guard lock(server_.mutex_);
    return server_.tree_.erase(pathOf(argument_)) != 0 ? "250 Deleted." : "550 No such file.";
  }

  std::string renameFrom() {
    const std::lock_guard lock(server_.mutex_);
    from_ = pathOf(argument_);
    return server_.tree_.contains(from_) ? "350 And the new name?" : "550 No such file.";
  }

  std::string renameTo() {
    const std::lock_guard lock(server_.mutex_);
    const auto node = server_.tree_.extract(std::exchange(from_, ""));
    if (node.empty()) return "503 RNFR first.";
    server_.tree_[pathOf(argument_)] = node.mapped();
    return "250 Renamed.";
  }

  /// Announces the transfer and connects for it; invalid when the client does not.
  TestSocket openData() {
    const char* const announcement = "150 Opening data connection.";
    if (activePort_ == 0) {
      TestSocket data = server_.passive_.accept(kDataWait);
      if (data.valid()) say(announcement);
      return data;
    }
    say(announcement);
    if (fault_.kind == FtpFault::kLateConnection) pause();
    return TestSocket::connect(server_.host_, activePort_, server_.host_);
  }

  std::string endTransfer(TestSocket data) {
    if (fault_.kind == FtpFault::kStallTransfer) waitForEnd();
    data.close();
    if (fault_.kind == FtpFault::kDropTransfer) control_.close();
    return fault_.kind == FtpFault::kCutTransfer ? "426 Cut off." : "226 Transferred.";
  }

  void say(const std::string& reply) {
    const std::string bytes = reply + "\r\n";
    const std::size_t piece = fault_.kind == FtpFault::kSplitReply ? 1 : bytes.size();
    for (std::size_t i = 0; i < bytes.size(); i += piece) {
      sendAll(control_, bytes.substr(i, piece));
      if (fault_.kind == FtpFault::kSplitReply) pause();
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

  /// What comes next; empty when the client or the server is gone. A connection that the client
  /// has closed is reset, which loses nothing then and leaves none of the two ports occupied.
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

  [[nodiscard]] bool goesOn() const { return control_.valid() && !server_.stopping_; }

  [[nodiscard]] std::string pathOf(const std::string& argument) const {
    return argument.starts_with('/') ? argument : folder_ + "/" + argument;
  }

  ScriptedFtpServer& server_;
  TestSocket control_;
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

ScriptedFtpServer::ScriptedFtpServer(const char* host)
    : host_(host),
      listener_(listenWithinReach(host)),
      passive_(TestSocket::listen(host)),
      thread_([this] { serve(); }) {
}

ScriptedFtpServer::~ScriptedFtpServer() {
  stopping_ = true;
  thread_.join();
}

void ScriptedFtpServer::serve() {
  while (!stopping_) {
    TestSocket control = listener_.accept(kSlice);
    if (control.valid()) Session(*this, std::move(control)).run();
  }
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

void ScriptedFtpServer::addFolder(const std::string& path) {
  const std::lock_guard lock(mutex_);
  for (std::string folder = path; !folder.empty(); folder = parentOf(folder)) tree_[folder];
}

void ScriptedFtpServer::addFile(const std::string& path, std::string content) {
  addFolder(parentOf(path));
  const std::lock_guard lock(mutex_);
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
