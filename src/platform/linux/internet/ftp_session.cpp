#include "platform/linux/internet/ftp_session.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace karvel {

FtpSession::~FtpSession() {
  constexpr FtpTimeLimits::Milliseconds kQuitLimit{1000};
  control_.beginExchange(std::min(kQuitLimit, control_.limits().answer));
  static_cast<void>(control_.command("QUIT"));
}

FtpSession::ErrorNumber FtpSession::logIn(const std::string& host, std::uint16_t port,
                                          const AddressLookup& lookup, const std::string& user,
                                          const std::string& password) {
  constexpr int kNotLoggedIn = 530;
  const FtpTimeLimits& limits = control_.limits();
  control_.beginExchange(limits.connect);
  const SocketAddresses addresses = lookUpWithin(limits.connect, lookup, host, port);
  if (const ErrorNumber error = control_.connect(addresses)) return error;

  control_.beginExchange(limits.exchange());
  if (const ErrorNumber error = control_.receiveLastReply()) return error;
  if (!reply().positive()) return control_.end(Internet::kErrorExtended);
  ErrorNumber error = control_.command("USER " + user);
  if (error == 0 && reply().intermediate()) error = control_.command("PASS " + password);
  if (error == 0 && reply().positive()) return 0;
  const bool refused = reply().complete() && reply().code() == kNotLoggedIn;
  if (error == 0) error = Internet::kErrorExtended;
  return control_.end(refused ? Internet::kErrorLoginFailure : error);
}

FtpSession::ErrorNumber FtpSession::command(const std::string& line) {
  control_.beginExchange(control_.limits().exchange());
  return control_.command(line);
}

FtpSession::ErrorNumber FtpSession::rename(const std::string& from, const std::string& to) {
  control_.beginExchange(control_.limits().exchange());
  const ErrorNumber error = control_.command("RNFR " + from);
  return error != 0 ? error : control_.command("RNTO " + to);
}

FtpSession::ErrorNumber FtpSession::upload(const std::string& remoteName, UploadReader& reader) {
  control_.beginExchange(control_.limits().upload(reader.size()));
  std::string_view piece;
  const auto move = [&](const FtpSocket& data) -> std::optional<ErrorNumber> {
    if (piece.empty()) {
      const auto next = reader.next();
      if (!next) return Internet::kErrorFileNotFound;
      if (next->empty()) return 0;
      piece = *next;
    }
    const auto sent = data.send(piece);
    piece.remove_prefix(sent.count);
    return sent.end;
  };
  return transfer(reader.type(), "STOR " + remoteName, POLLOUT, move);
}

FtpSession::ErrorNumber FtpSession::list(const std::string& argument, FtpListing& listing) {
  constexpr std::size_t kLongestListing = 128 * 1024 * 1024;  // bytes
  control_.beginExchange(control_.limits().exchange());
  std::size_t size = 0;
  const auto move = [&](const FtpSocket& data) -> std::optional<ErrorNumber> {
    std::array<char, 16 * 1024> bytes;
    const auto received = data.receive(bytes);
    listing.append({bytes.data(), received.count});
    size += received.count;
    return size > kLongestListing ? Internet::kErrorInternal : received.end;
  };
  return transfer(TransferType::kText, argument.empty() ? "LIST" : "LIST " + argument, POLLIN,
                  move);
}

FtpSession::ErrorNumber FtpSession::transfer(TransferType type, const std::string& command,
                                             short direction, const MoveData& move) {
  if (type_ != type) {
    type_.reset();
    const std::string line = std::string("TYPE ") + static_cast<char>(type);
    if (const ErrorNumber error = control_.command(line)) return error;
    type_ = type;
  }
  return transferData(control_, passive_, command, direction, move);
}

}  // namespace karvel
