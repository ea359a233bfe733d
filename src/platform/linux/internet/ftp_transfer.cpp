#include "platform/linux/internet/ftp_transfer.h"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <utility>

namespace karvel {
namespace {

using ErrorNumber = Internet::ErrorNumber;

constexpr unsigned kByte = 256;

/// The port of a reply 227, to PASV: "h1,h2,h3,h4,p1,p2", around which servers write what they
/// like. 0 for none.
std::uint16_t passivePort(const std::string& reply) {
  constexpr std::string_view kCode = "227";
  if (!reply.starts_with(kCode)) return 0;
  for (std::size_t i = kCode.size(); i < reply.size(); ++i) {
    unsigned high = kByte;
    unsigned low = kByte;
    std::sscanf(&reply[i], "%*3u,%*3u,%*3u,%*3u,%3u,%3u", &high, &low);
    if (high < kByte && low < kByte) return static_cast<std::uint16_t>(high * kByte + low);
  }
  return 0;
}

/// The port of a reply 229, to EPSV: "(|||port|)", with any character for "|". 0 for none.
std::uint16_t extendedPassivePort(const std::string& reply) {
  unsigned port = 0;
  std::sscanf(reply.c_str(), "229%*[^(](%*c%*c%*c%5u", &port);
  return static_cast<std::uint16_t>(port <= 0xFFFF ? port : 0);
}

std::string portCommand(const SocketAddress& address) {
  const std::string host = address.host();
  const unsigned port = address.port();
  if (address.isIpv6()) return "EPRT |2|" + host + "|" + std::to_string(port) + "|";
  std::string numbers =
      host + "," + std::to_string(port / kByte) + "," + std::to_string(port % kByte);
  std::replace(numbers.begin(), numbers.end(), '.', ',');
  return "PORT " + numbers;
}

/// The replies and the data connection are watched side by side, as either may come first, and a
/// refusal may come at any time.
class Transfer {
 public:
  Transfer(FtpControl& control, short direction, const MoveData& move)
      : control_(control), direction_(direction), move_(move) {}

  [[nodiscard]] ErrorNumber run(const std::string& command, bool passive) {
    if (control_.ended() != 0) return control_.ended();
    if (const ErrorNumber error = passive ? connect() : listen()) return error;
    if (const ErrorNumber error = control_.send(command)) return error;
    beginStep();
    while (!result_ || !answered_) {
      const bool hasReply = !answered_ && control_.hasInput();
      if (const ErrorNumber error = hasReply ? takeReply() : awaitEvent()) return error;
    }
    return *result_;
  }

 private:
  [[nodiscard]] ErrorNumber connect() {
    SocketAddress server = control_.socket().peer();
    const bool extended = server.isIpv6();
    if (const ErrorNumber error = control_.command(extended ? "EPSV" : "PASV")) return error;
    const std::string& reply = control_.reply().text();
    const std::uint16_t port = extended ? extendedPassivePort(reply) : passivePort(reply);
    if (port == 0) return Internet::kErrorExtended;

    server.setPort(port);
    const Deadline limit = control_.deadline(control_.limits().connect);
    const ErrorNumber error = data_.connect({server}, limit);
    connected_ = error == 0;
    return error == Internet::kErrorTimeout ? control_.end(error) : error;
  }

  [[nodiscard]] ErrorNumber listen() {
    data_ = FtpSocket::listen(control_.socket().local());
    if (!data_.valid()) return Internet::kErrorCannotConnect;
    return control_.command(portCommand(data_.local()));
  }

  void accept() {
    for (FtpSocket next = data_.accept(); next.valid(); next = data_.accept()) {
      if (next.peer().host() != control_.socket().peer().host()) continue;
      data_ = std::move(next);
      connected_ = true;
      return beginStep();
    }
  }

  [[nodiscard]] ErrorNumber awaitEvent() {
    // What is uploaded waits until the server has answered the command.
    const short direction = begun_ || direction_ == POLLIN ? direction_ : 0;
    pollfd sockets[] = {control_.socket().awaiting(answered_ ? 0 : POLLIN),
                        data_.awaiting(connected_ ? direction : POLLIN)};
    if (!waitFor(sockets, deadline_)) return control_.end(Internet::kErrorTimeout);
    if (sockets[1].revents != 0) advanceData();
    return sockets[0].revents != 0 ? takeReply() : 0;
  }

  void advanceData() {
    if (!connected_) return accept();
    beginStep();
    result_ = move_(data_);
    if (result_) data_.close();
  }

  [[nodiscard]] ErrorNumber takeReply() {
    if (const ErrorNumber error = control_.receiveReply()) return error;
    beginStep();
    begun_ = true;
    const FtpReply& reply = control_.reply();
    if (reply.preliminary()) return 0;
    answered_ = true;
    if (!connected_) accept();
    // Without a data connection there was nothing to list.
    if (!connected_ && direction_ == POLLIN) result_ = 0;
    const bool early = direction_ == POLLOUT && !result_;
    return reply.positive() && !early ? 0 : Internet::kErrorExtended;
  }

  void beginStep() {
    const FtpTimeLimits& limits = control_.limits();
    deadline_ = control_.deadline(begun_ && connected_ ? limits.silence() : limits.answer);
  }

  FtpControl& control_;
  const short direction_;  ///< POLLIN or POLLOUT
  const MoveData& move_;
  Deadline deadline_;
  FtpSocket data_;  ///< listens until it is connected; closed after the data
  bool connected_ = false;
  bool begun_ = false;                 ///< the server has answered the command
  bool answered_ = false;              ///< for the last time
  std::optional<ErrorNumber> result_;  ///< of the data, once they have ended
};

}  // namespace

ErrorNumber transferData(FtpControl& control, bool passive, const std::string& command,
                         short direction, const MoveData& move) {
  return Transfer(control, direction, move).run(command, passive);
}

}  // namespace karvel
