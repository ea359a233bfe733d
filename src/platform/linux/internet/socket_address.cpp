#include "platform/linux/internet/socket_address.h"

#include <arpa/inet.h>
#include <netdb.h>

#include <array>
#include <cstring>
#include <future>
#include <memory>
#include <system_error>
#include <thread>

namespace karvel {
namespace {

// Both families hold the port at the same place.
static_assert(offsetof(sockaddr_in, sin_port) == offsetof(sockaddr_in6, sin6_port));

struct AddressListEnd {
  void operator()(addrinfo* list) const { freeaddrinfo(list); }
};

}  // namespace

std::uint16_t SocketAddress::port() const {
  return ntohs(reinterpret_cast<const sockaddr_in&>(storage).sin_port);
}

void SocketAddress::setPort(std::uint16_t port) {
  reinterpret_cast<sockaddr_in&>(storage).sin_port = htons(port);
}

std::string SocketAddress::host() const {
  std::array<char, INET6_ADDRSTRLEN> digits{};
  const void* const bytes =
      isIpv6() ? static_cast<const void*>(&reinterpret_cast<const sockaddr_in6&>(storage).sin6_addr)
               : static_cast<const void*>(&reinterpret_cast<const sockaddr_in&>(storage).sin_addr);
  inet_ntop(storage.ss_family, bytes, digits.data(), digits.size());
  return digits.data();
}

SocketAddresses addressesOf(const std::string& host, std::uint16_t port) {
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (host.empty() || getaddrinfo(host.c_str(), nullptr, &hints, &found) != 0) return {};
  const std::unique_ptr<addrinfo, AddressListEnd> list(found);
  SocketAddresses addresses;
  for (; found != nullptr; found = found->ai_next) {
    if (found->ai_family != AF_INET && found->ai_family != AF_INET6) continue;
    SocketAddress& address = addresses.emplace_back();
    std::memcpy(&address.storage, found->ai_addr, found->ai_addrlen);
    address.length = found->ai_addrlen;
    address.setPort(port);
  }
  return addresses;
}

SocketAddresses lookUpWithin(std::chrono::milliseconds limit, const AddressLookup& lookup,
                             const std::string& host, std::uint16_t port) {
  std::packaged_task<SocketAddresses()> task([=] { return lookup(host, port); });
  auto addresses = task.get_future();
  try {
    std::thread(std::move(task)).detach();
  } catch (const std::system_error&) {
    return {};  // no thread to be had
  }
  return addresses.wait_for(limit) == std::future_status::ready ? addresses.get()
                                                                : SocketAddresses();
}

}  // namespace karvel
