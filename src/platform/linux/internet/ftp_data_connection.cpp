#include "platform/linux/internet/ftp_data_connection.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace karvel {
namespace {

constexpr int kPassive = 227;
constexpr int kExtendedPassive = 229;
constexpr unsigned kByte = 256;

/// Takes a number up to `highest` off the front of `text`.
std::optional<unsigned> takeNumber(std::string_view& text, unsigned highest) {
  unsigned number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || number > highest) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return number;
}

/// The port in "h1,h2,h3,h4,p1,p2" at the beginning of `text`.
std::optional<std::uint16_t> portAtFront(std::string_view text) {
  std::array<unsigned, 6> numbers{};
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (i > 0 && !text.starts_with(',')) return std::nullopt;
    if (i > 0) text.remove_prefix(1);
    const auto number = takeNumber(text, kByte - 1);
    if (!number) return std::nullopt;
    numbers[i] = *number;
  }
  return static_cast<std::uint16_t>(numbers[4] * kByte + numbers[5]);
}

/// The port of a reply to PASV. Around the numbers servers write what they like.
std::optional<std::uint16_t> passivePort(std::string_view reply) {
  constexpr std::size_t kCode = 3;
  for (std::size_t i = kCode; i < reply.size(); ++i) {
    if (const auto port = portAtFront(reply.substr(i))) return port;
  }
  return std::nullopt;
}

/// The port of a reply to EPSV: "(|||port|)", with any character for "|".
std::optional<std::uint16_t> extendedPassivePort(std::string_view reply) {
  constexpr std::size_t kDelimiters = 3;
  const auto begin = reply.find('(');
  if (begin == std::string_view::npos) return std::nullopt;
  reply.remove_prefix(std::min(begin + 1 + kDelimiters, reply.size()));
  const auto port = takeNumber(reply, 0xFFFF);
  return port ? std::optional(static_cast<std::uint16_t>(*port)) : std::nullopt;
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
  if (!expected || !port) return Internet::kErrorExtended;

  server.setPort(*port);
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
