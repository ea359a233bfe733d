#include "fakes/ftp_server_session.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <thread>
#include <utility>

namespace karvel {
namespace {

using Kind = FtpFault::Kind;
using std::chrono::milliseconds;

constexpr milliseconds kSlice{10};
constexpr int kDataWaits = 100;  ///< slices until a data connection must be there
constexpr std::size_t kPiece = 8 * 1024;
constexpr std::size_t kNoLimit = static_cast<std::size_t>(-1);

std::string upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

std::string listingLine(const RemoteTree::Entry& entry) {
  std::string line = entry.folder ? "drwxr-xr-x 2 ftp ftp " : "-rw-r--r-- 1 ftp ftp ";
  line += std::to_string(entry.size) + " Jan 01  2024 " + entry.name + "\r\n";
  return line;
}

}  // namespace

FtpServerSession::FtpServerSession(ScriptedFtpServer& server, TestSocket control)
    : server_(server), control_(std::move(control)) {
}

const std::map<std::string, FtpServerSession::Handler>& FtpServerSession::handlers() {
  static const std::map<std::string, Handler> table = {
      {"USER", &FtpServerSession::user}, {"PASS", &FtpServerSession::pass},
      {"PWD", &FtpServerSession::pwd},   {"CWD", &FtpServerSession::cwd},
      {"PASV", &FtpServerSession::pasv}, {"EPSV", &FtpServerSession::epsv},
      {"PORT", &FtpServerSession::port}, {"EPRT", &FtpServerSession::eprt},
      {"LIST", &FtpServerSession::list}, {"STOR", &FtpServerSession::stor},
      {"DELE", &FtpServerSession::dele}, {"RNFR", &FtpServerSession::rnfr},
      {"RNTO", &FtpServerSession::rnto},
  };
  return table;
}

void FtpServerSession::run() {
  fault_ = server_.recordAndChoose(ScriptedFtpServer::kGreeting, "");
  if (!misbehaveBefore()) say(fault_.kind == Kind::kReplaceReply ? fault_.text : "220 Ready.");
  if (fault_.kind == Kind::kDropAfter) control_.close();
  while (goesOn()) {
    const auto line = readLine();
    if (!line) return;
    handle(*line);
  }
}

std::optional<std::string> FtpServerSession::readLine() {
  while (goesOn()) {
    const auto end = received_.find("\r\n");
    if (end != std::string::npos) {
      std::string line = received_.substr(0, end);
      received_.erase(0, end + 2);
      return line;
    }
    if (!control_.waitReadable(kSlice)) continue;
    const std::string bytes = control_.receive(kPiece);
    if (bytes.empty()) return std::nullopt;
    received_ += bytes;
  }
  return std::nullopt;
}

void FtpServerSession::handle(const std::string& line) {
  const auto blank = line.find(' ');
  const std::string command = upper(line.substr(0, blank));
  const std::string argument = blank == std::string::npos ? "" : line.substr(blank + 1);
  fault_ = server_.recordAndChoose(command, line);
  if (misbehaveBefore()) return;
  handleWell(command, argument);
  if (fault_.kind == Kind::kDropAfter) control_.close();
}

bool FtpServerSession::misbehaveBefore() {
  switch (fault_.kind) {
    case Kind::kRefuse:
      say(fault_.text);
      return true;
    case Kind::kDropBefore:
      control_.close();
      return true;
    case Kind::kReset:
      control_.reset();
      return true;
    case Kind::kStall:
      waitForEnd();
      return true;
    case Kind::kEndlessReply:
      babble();
      return true;
    case Kind::kDelay:
      pause(fault_.time);
      return false;
    default:
      return false;
  }
}

void FtpServerSession::handleWell(const std::string& command, const std::string& argument) {
  const std::string reply = replyTo(command, argument);
  say(fault_.kind == Kind::kReplaceReply ? fault_.text : reply);
  if (command == "QUIT") control_.close();
}

std::string FtpServerSession::replyTo(const std::string& command, const std::string& argument) {
  if (command == "QUIT") return "221 Goodbye.";
  if (!loggedIn_ && command != "USER" && command != "PASS") return "530 Not logged in.";
  if (command == "TYPE") return "200 Type set.";
  const auto found = handlers().find(command);
  return found == handlers().end() ? "502 Unknown command." : (this->*found->second)(argument);
}

std::string FtpServerSession::user(const std::string& argument) {
  user_ = argument;
  return "331 Password, please.";
}

std::string FtpServerSession::pass(const std::string& argument) {
  loggedIn_ = user_ == server_.options().user && argument == server_.options().password;
  return loggedIn_ ? "230 Welcome." : "530 Login incorrect.";
}

std::string FtpServerSession::pwd(const std::string& /*argument*/) {
  std::string quoted;
  for (const char c : folder_) quoted.append(c == '"' ? 2 : 1, c);
  return "257 \"" + quoted + "\" is the current folder.";
}

std::string FtpServerSession::cwd(const std::string& argument) {
  const std::string path = pathOf(argument);
  if (!server_.tree().isFolder(path)) return "550 No such folder.";
  folder_ = path;
  return "250 Changed.";
}

int FtpServerSession::openPassivePort() {
  const auto host = server_.options().host;
  const bool silent = fault_.kind == Kind::kSilentPort;
  passive_ = silent ? TestSocket::listenSilently(host) : TestSocket::listen(host);
  const int port = passive_.port();
  if (fault_.kind == Kind::kRefusedPort) passive_.close();
  return port;
}

std::string FtpServerSession::pasv(const std::string& /*argument*/) {
  const std::string host = fault_.kind == Kind::kForeignAddress ? "10,255,255,1," : "127,0,0,1,";
  const int port = openPassivePort();
  return "227 Entering Passive Mode (" + host + std::to_string(port / 256) + "," +
         std::to_string(port % 256) + ").";
}

std::string FtpServerSession::epsv(const std::string& /*argument*/) {
  return "229 Entering Extended Passive Mode (|||" + std::to_string(openPassivePort()) + "|)";
}

std::string FtpServerSession::port(const std::string& argument) {
  int high = 0;
  int low = 0;
  const int count = std::sscanf(argument.c_str(), "%*d,%*d,%*d,%*d,%d,%d", &high, &low);
  if (count != 2) return "501 Bad address.";
  passive_.close();
  activePort_ = high * 256 + low;
  if (fault_.kind == Kind::kStranger) {
    stranger_ = TestSocket::connect(TestSocket::Host::kOther, activePort_);
  }
  return "200 Port set.";
}

std::string FtpServerSession::eprt(const std::string& argument) {
  passive_.close();
  if (std::sscanf(argument.c_str(), "|%*d|%*[^|]|%d|", &activePort_) != 1)
    return "501 Bad address.";
  return "200 Port set.";
}

std::string FtpServerSession::list(const std::string& /*argument*/) {
  std::string text;
  if (const auto scripted = server_.listing()) {
    text = *scripted;
  } else {
    for (const auto& entry : server_.tree().entries(folder_)) text += listingLine(entry);
  }
  return sendData(text);
}

std::string FtpServerSession::stor(const std::string& argument) {
  const std::string path = pathOf(argument);
  // As on a real server, a transfer that breaks off leaves what has arrived.
  if (!server_.tree().store(path, "")) return "553 Not allowed.";
  std::string content;
  std::string reply = receiveData(content);
  server_.tree().store(path, std::move(content));
  return reply;
}

std::string FtpServerSession::dele(const std::string& argument) {
  return server_.tree().removeFile(pathOf(argument)) ? "250 Deleted." : "550 No such file.";
}

std::string FtpServerSession::rnfr(const std::string& argument) {
  renameFrom_ = pathOf(argument);
  return server_.tree().isFile(renameFrom_) ? "350 And the new name?" : "550 No such file.";
}

std::string FtpServerSession::rnto(const std::string& argument) {
  const std::string from = std::exchange(renameFrom_, "");
  if (from.empty()) return "503 RNFR first.";
  return server_.tree().rename(from, pathOf(argument)) ? "250 Renamed." : "553 Not allowed.";
}

TestSocket FtpServerSession::openData() {
  TestSocket listener = std::move(passive_);
  passive_ = TestSocket();
  if (!listener.valid()) {
    say("150 Opening data connection.");
    if (fault_.kind == Kind::kLateConnection) pause(fault_.time);
    return TestSocket::connect(server_.options().host, std::exchange(activePort_, 0));
  }
  TestSocket data;
  for (int i = 0; i < kDataWaits && goesOn() && !data.valid(); ++i) data = listener.accept(kSlice);
  if (data.valid()) say("150 Opening data connection.");
  return data;
}

std::string FtpServerSession::sendData(std::string_view bytes) {
  TestSocket data = openData();
  if (!data.valid()) return "425 No data connection.";
  while (fault_.kind == Kind::kEndlessTransfer && goesOn() && sendAll(data, fault_.text)) {
    pause(fault_.time);
  }
  const std::string_view allowed = bytes.substr(0, transferLimit());
  sendAll(data, allowed);
  return endTransfer(std::move(data), allowed.size());
}

std::string FtpServerSession::receiveData(std::string& bytes) {
  TestSocket data = openData();
  if (!data.valid()) return "425 No data connection.";
  const std::size_t limit = transferLimit();
  while (goesOn() && bytes.size() < limit) {
    if (!data.waitReadable(kSlice)) continue;
    const std::string piece = data.receive(std::min(kPiece, limit - bytes.size()));
    if (piece.empty()) break;
    bytes += piece;
  }
  return endTransfer(std::move(data), bytes.size());
}

std::size_t FtpServerSession::transferLimit() const {
  const bool limited = fault_.kind == Kind::kCutTransfer || fault_.kind == Kind::kDropTransfer ||
                       fault_.kind == Kind::kStallTransfer;
  return limited ? fault_.bytes : kNoLimit;
}

std::string FtpServerSession::endTransfer(TestSocket data, std::size_t bytes) {
  if (fault_.kind == Kind::kStallTransfer) waitForEnd();
  data.close();
  if (fault_.kind == Kind::kDropTransfer) control_.close();
  if (fault_.kind == Kind::kCutTransfer) return fault_.text;
  return "226 Transferred " + std::to_string(bytes) + " bytes.";
}

void FtpServerSession::say(const std::string& reply) {
  const std::string bytes = reply + "\r\n";
  if (fault_.kind != Kind::kSplitReply) {
    sendAll(control_, bytes);
    return;
  }
  for (const char c : bytes) {
    sendAll(control_, {&c, 1});
    pause(milliseconds{1});
  }
}

bool FtpServerSession::sendAll(const TestSocket& socket, std::string_view bytes) {
  while (goesOn() && !bytes.empty()) {
    if (!socket.waitWritable(kSlice)) continue;
    const std::size_t sent = socket.send(bytes.substr(0, kPiece));
    if (sent == 0) return false;
    bytes.remove_prefix(sent);
  }
  return bytes.empty();
}

void FtpServerSession::babble() {
  while (sendAll(control_, fault_.text)) pause(fault_.time);
  control_.close();
}

void FtpServerSession::waitForEnd() {
  while (goesOn()) {
    if (!control_.waitReadable(kSlice)) continue;
    if (control_.receive(kPiece).empty()) control_.close();
  }
}

void FtpServerSession::pause(milliseconds time) const {
  const auto end = std::chrono::steady_clock::now() + time;
  while (goesOn() && std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(std::min(kSlice, time));
  }
}

bool FtpServerSession::goesOn() const {
  return control_.valid() && !server_.stopping_;
}

std::string FtpServerSession::pathOf(const std::string& argument) const {
  return RemoteTree::resolve(folder_, argument);
}

}  // namespace karvel
