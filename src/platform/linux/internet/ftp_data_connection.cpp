#include "platform/linux/internet/ftp_data_connection.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>

namespace karvel {
namespace {

constexpr int kPassive = 227;
constexpr int kExtendedPassive = 229;
constexpr unsigned kByte = 256;

/// The port of a reply to PASV: "h1,h2,h3,h4,p1,p2", around which servers write what they like.
/// 0 when there is none.
std::uint16_t passivePort(const std::string& reply) {
  constexpr std::size_t kCode = 3;
  for (std::size_t i = kCode; i < reply.size(); ++i) {
    unsigned high = 0;
    unsigned low = 0;
    const int found = std::sscanf(&reply[i], "%*3u,%*3u,%*3u,%*3u,%3u,%3u", &high, &low);
    if (found == 2 && high < kByte && low < kByte) {
      return static_cast<std::uint16_t>(high * kByte + low);
    }
  }
  return 0;
}

/// The port of a reply to EPSV: "(|||port|)", with any character for "|". 0 when there is none.
std::uint16_t extendedPassivePort(const std::string& reply) {
  unsigned port = 0;
  const auto begin = reply.find('(');
  if (begin == std::string::npos) return 0;
  const bool found = std::sscanf(&reply[begin], "(%*c%*c%*c%5u", &port) == 1 && port <= 0xFFFF;
  return static_cast<std::uint16_t>(found ? port : 0);
}

std::string portCommand(const SocketAddress& address) {
  const std::string port = std::to_string(address.port());
  if (address.isIpv6()) return "EPRT |2|" + address.host() + "|" + port + "|";
  std::string numbers = address.host();
  std::replace(numbers.begin(), numbers.end(), '.', ',');
  return "PORT " + numbers + "," + std::to_string(address.port() / kByte) + "," +
         std::to_string(address.port() % kByte);
}

}  // namespace

FtpDataConnection::ErrorNumber FtpDataConnection::open(FtpControl& control, bool passive) {
  if (control.ended() != 0) return control.ended();
  return passive ? openPassive(control) : openActive(control);
}

FtpDataConnection::ErrorNumber FtpDataConnection::openPassive(FtpControl& control) {
  SocketAddress server = control.socket().peer();
  const bool extended = server.isIpv6();
  if (const ErrorNumber error = control.command(extended ? "EPSV" : "PASV")) return error;
  const FtpReply& reply = control.reply();
  const auto port = extended ? extendedPassivePort(reply.text()) : passivePort(reply.text());
  const bool expected = reply.code() == (extended ? kExtendedPassive : kPassive);
  if (!expected || port == 0) return Internet::kErrorExtended;

  server.setPort(port);
  control.watch.beginStep(control.limits().connect);
  ErrorNumber error = 0;
  socket_ = FtpSocket::connect(server, control.watch, error);
  return error == Internet::kErrorTimeout ? control.end(error) : error;
}

FtpDataConnection::ErrorNumber FtpDataConnection::openActive(FtpControl& control) {
  listener_ = FtpSocket::listen(control.socket().local());
  if (!listener_.valid()) return Internet::kErrorCannotConnect;
  return control.command(portCommand(listener_.local()));
}

bool FtpDataConnection::accept(const FtpControl& control) {
  SocketAddress peer;
  for (auto next = listener_.accept(peer); next.valid(); next = listener_.accept(peer)) {
    if (peer.host() != control.socket().peer().host()) continue;
    socket_ = std::move(next);
    listener_.close();
    return true;
  }
  return false;
}

}  // namespace karvel
