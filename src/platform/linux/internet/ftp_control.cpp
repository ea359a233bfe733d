#include "platform/linux/internet/ftp_control.h"

#include <array>
#include <cerrno>

namespace karvel {
namespace {

constexpr int kClosing = 421;

std::string_view withoutReturn(std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

}  // namespace

FtpControl::ErrorNumber FtpControl::connect(const SocketAddresses& addresses) {
  ErrorNumber error = Internet::kErrorNameNotResolved;
  auto untried = static_cast<int>(addresses.size());
  for (const SocketAddress& address : addresses) {
    watch.beginStep(limits_.connect);
    watch.beginStep(watch.remaining() / untried--);
    socket_ = FtpSocket::connect(address, watch, error);
    if (socket_.valid()) return 0;
  }
  return end(error);
}

FtpControl::ErrorNumber FtpControl::command(const std::string& line) {
  if (const ErrorNumber error = send(line)) return error;
  if (const ErrorNumber error = receiveLastReply()) return error;
  return reply_.positive() || reply_.intermediate() ? 0 : Internet::kErrorExtended;
}

FtpControl::ErrorNumber FtpControl::send(const std::string& line) {
  if (ended_ != 0) return ended_;
  std::string bytes = line + "\r\n";
  watch.beginStep(limits_.answer);
  while (!bytes.empty()) {
    pollfd writable = socket_.awaiting(POLLOUT);
    if (!waitFor({&writable, 1}, watch)) return end(Internet::kErrorTimeout);
    const auto sent = socket_.send(bytes);
    // The server is gone. What it said before it went is still to be read, and tells why.
    if (!sent) break;
    bytes.erase(0, *sent);
  }
  return 0;
}

FtpControl::ErrorNumber FtpControl::receiveReply(FtpTimeLimits::Milliseconds limit) {
  if (ended_ != 0) return ended_;
  reply_ = {};
  watch.beginStep(limit);
  while (true) {
    if (const ErrorNumber error = takeLines()) return end(error);
    if (reply_.complete()) replies_ += reply_.text() + "\r\n";
    if (reply_.complete()) return reply_.code() == kClosing ? end(Internet::kErrorExtended) : 0;

    pollfd readable = socket_.awaiting(POLLIN);
    if (!waitFor({&readable, 1}, watch)) return end(Internet::kErrorTimeout);
    std::array<char, 4096> bytes;
    const auto count = socket_.receive(bytes);
    if (!count) {
      return end(errno == ECONNRESET ? Internet::kErrorConnectionReset
                                     : Internet::kErrorConnectionAborted);
    }
    input_.append(bytes.data(), *count);
  }
}

FtpControl::ErrorNumber FtpControl::receiveLastReply() {
  do {
    if (const ErrorNumber error = receiveReply(limits_.answer)) return error;
  } while (reply_.preliminary());
  return 0;
}

FtpControl::ErrorNumber FtpControl::takeLines() {
  while (!reply_.complete()) {
    const auto end = input_.find('\n');
    const bool endless = end == std::string::npos && input_.size() > FtpReply::kLongest;
    if (end == std::string::npos && !endless) return 0;
    const bool sensible = reply_.addLine(withoutReturn(std::string_view(input_).substr(0, end)));
    if (!sensible || endless) return Internet::kErrorExtended;
    input_.erase(0, end + 1);
  }
  return 0;
}

FtpControl::ErrorNumber FtpControl::end(ErrorNumber reason) {
  socket_.close();
  return ended_ = reason;
}

}  // namespace karvel
