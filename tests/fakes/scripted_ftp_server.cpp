#include "fakes/scripted_ftp_server.h"

#include "fakes/ftp_server_session.h"

namespace karvel {
namespace {

constexpr std::chrono::milliseconds kAcceptSlice{20};
constexpr int kHighestPort = 60000;  ///< that the program takes from its settings

TestSocket listenWithinReach(TestSocket::Host host) {
  TestSocket listener = TestSocket::listen(host);
  while (listener.port() > kHighestPort) listener = TestSocket::listen(host);
  return listener;
}

/// "PORT 127,0,0,1,200,13" as "PORT".
std::string withoutPort(const std::string& command, const std::string& line) {
  return command == "PORT" || command == "EPRT" ? command : line;
}

}  // namespace

ScriptedFtpServer::ScriptedFtpServer() : ScriptedFtpServer(Options()) {
}

ScriptedFtpServer::ScriptedFtpServer(Options options)
    : options_(std::move(options)),
      listener_(listenWithinReach(options_.host)),
      port_(listener_.port()),
      thread_([this] { serve(); }) {
}

ScriptedFtpServer::~ScriptedFtpServer() {
  stopping_ = true;
  thread_.join();
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

void ScriptedFtpServer::setListing(std::string text) {
  const std::lock_guard lock(mutex_);
  listing_ = std::move(text);
}

std::vector<std::string> ScriptedFtpServer::transcript() const {
  const std::lock_guard lock(mutex_);
  return transcript_;
}

void ScriptedFtpServer::clearTranscript() {
  const std::lock_guard lock(mutex_);
  transcript_.clear();
}

void ScriptedFtpServer::serve() {
  while (!stopping_) {
    TestSocket control = listener_.accept(kAcceptSlice);
    if (!control.valid()) continue;
    ++connections_;
    FtpServerSession(*this, std::move(control)).run();
  }
}

FtpFault ScriptedFtpServer::recordAndChoose(const std::string& command, const std::string& line) {
  const std::lock_guard lock(mutex_);
  if (command != kGreeting) transcript_.push_back(withoutPort(command, line));
  const int occurrence = ++counts_[command];
  auto found = script_.find({command, occurrence});
  if (found == script_.end()) found = script_.find({command, kEvery});
  return found == script_.end() ? FtpFault() : found->second;
}

std::optional<std::string> ScriptedFtpServer::listing() const {
  const std::lock_guard lock(mutex_);
  return listing_;
}

}  // namespace karvel
