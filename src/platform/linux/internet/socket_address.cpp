#include "platform/linux/internet/socket_address.h"

#include <netdb.h>
#include <netinet/in.h>

#include <array>
#include <cstring>
#include <future>
#include <system_error>
#include <thread>

namespace karvel {

// Both families hold the port at the same place.
static_assert(offsetof(sockaddr_in, sin_port) == offsetof(sockaddr_in6, sin6_port));

std::uint16_t SocketAddress::port() const {
  return ntohs(reinterpret_cast<const sockaddr_in&>(storage).sin_port);
}

void SocketAddress::setPort(std::uint16_t port) {
  reinterpret_cast<sockaddr_in&>(storage).sin_port = htons(port);
}

std::string SocketAddress::host() const {
  std::array<char, NI_MAXHOST> digits{};
  getnameinfo(get(), length, digits.data(), digits.size(), nullptr, 0, NI_NUMERICHOST);
  const std::string host = digits.data();
  return host.substr(0, host.find('%'));
}

SocketAddresses addressesOf(const std::string& host, std::uint16_t port) {
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* list = nullptr;
  if (host.empty() || getaddrinfo(host.c_str(), nullptr, &hints, &list) != 0) return {};
  SocketAddresses addresses;
  for (const addrinfo* found = list; found != nullptr; found = found->ai_next) {
    SocketAddress& address = addresses.emplace_back();
    std::memcpy(&address.storage, found->ai_addr, found->ai_addrlen);
    address.length = found->ai_addrlen;
    address.setPort(port);
  }
  freeaddrinfo(list);
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
