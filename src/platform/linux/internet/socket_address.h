#pragma once

#include <sys/socket.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace karvel {

/// Address and port of one end of a TCP connection, IPv4 or IPv6.
struct SocketAddress {
  sockaddr_storage storage{};
  socklen_t length = sizeof(sockaddr_storage);

  [[nodiscard]] const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&storage); }
  [[nodiscard]] sockaddr* get() { return reinterpret_cast<sockaddr*>(&storage); }

  [[nodiscard]] bool isIpv6() const { return storage.ss_family == AF_INET6; }
  [[nodiscard]] std::uint16_t port() const;
  void setPort(std::uint16_t port);
  /// The address without port and zone, in digits.
  [[nodiscard]] std::string host() const;
};

using SocketAddresses = std::vector<SocketAddress>;
/// Finds the addresses of a host, best first; none when its name does not resolve. May block.
using AddressLookup = std::function<SocketAddresses(const std::string& host, std::uint16_t port)>;

/// The system's name service.
[[nodiscard]] SocketAddresses addressesOf(const std::string& host, std::uint16_t port);

/// Runs `lookup`, but waits no longer than `limit` for it: then there are no addresses, and the
/// lookup ends on a thread of its own.
[[nodiscard]] SocketAddresses lookUpWithin(std::chrono::milliseconds limit,
                                           const AddressLookup& lookup, const std::string& host,
                                           std::uint16_t port);

}  // namespace karvel
