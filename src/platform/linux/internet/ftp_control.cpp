#include "platform/linux/internet/ftp_control.h"

#include <array>

namespace karvel {

FtpControl::ErrorNumber FtpControl::connect(const SocketAddresses& addresses) {
  const ErrorNumber error = socket_.connect(addresses, deadline(limits_.connect));
  return error == 0 ? 0 : end(error);
}

FtpControl::ErrorNumber FtpControl::command(const std::string& line) {
  if (const ErrorNumber error = send(line)) return error;
  if (const ErrorNumber error = receiveLastReply()) return error;
  return reply_.positive() || reply_.intermediate() ? 0 : Internet::kErrorExtended;
}

FtpControl::ErrorNumber FtpControl::send(const std::string& line) {
  if (ended_ != 0) return ended_;
  std::string bytes = line + "\r\n";
  const Deadline limit = deadline(limits_.answer);
  while (!bytes.empty()) {
    if (!socket_.await(POLLOUT, limit)) return end(Internet::kErrorTimeout);
    const auto sent = socket_.send(bytes);
    // The server is gone. What it said before it went is still to be read, and tells why.
    if (sent.end) break;
    bytes.erase(0, sent.count);
  }
  return 0;
}

FtpControl::ErrorNumber FtpControl::receiveReply() {
  constexpr int kClosing = 421;
  if (ended_ != 0) return ended_;
  reply_ = {};
  const Deadline limit = deadline(limits_.answer);
  while (takeLines()) {
    if (reply_.complete()) {
      replies_ += reply_.text() + "\r\n";
      return reply_.code() == kClosing ? end(Internet::kErrorExtended) : 0;
    }
    if (!socket_.await(POLLIN, limit)) return end(Internet::kErrorTimeout);
    std::array<char, 4096> bytes;
    const auto received = socket_.receive(bytes);
    if (received.end == 0) return end(Internet::kErrorConnectionAborted);
    if (received.end) return end(*received.end);
    input_.append(bytes.data(), received.count);
  }
  return end(Internet::kErrorExtended);
}

FtpControl::ErrorNumber FtpControl::receiveLastReply() {
  do {
    if (const ErrorNumber error = receiveReply()) return error;
  } while (reply_.preliminary());
  return 0;
}

bool FtpControl::takeLines() {
  while (!reply_.complete()) {
    const auto end = input_.find('\n');
    const bool open = end == std::string::npos;
    if (open && input_.size() <= FtpReply::kLongest) return true;
    std::string_view line = std::string_view(input_).substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (!reply_.addLine(line) || open) return false;
    input_.erase(0, end + 1);
  }
  return true;
}

FtpControl::ErrorNumber FtpControl::end(ErrorNumber reason) {
  socket_.close();
  return ended_ = reason;
}

}  // namespace karvel
