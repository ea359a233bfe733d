#include "fakes/test_socket.h"

#include <utility>

#include "socket_shim.h"

namespace karvel {
namespace {

shim::Socket nativeOf(std::intptr_t socket) {
  return static_cast<shim::Socket>(socket);
}

void useLibrary() {
  [[maybe_unused]] static const shim::Library library;
}

/// The loopback address of a host, with a port.
struct Loopback {
  sockaddr_storage storage{};
  shim::Length length = 0;

  Loopback(TestSocket::Host host, int port) {
    const auto networkPort = htons(static_cast<std::uint16_t>(port));
    if (host == TestSocket::Host::kIpv6) {
      auto& address = reinterpret_cast<sockaddr_in6&>(storage);
      address.sin6_family = AF_INET6;
      address.sin6_addr = in6addr_loopback;
      address.sin6_port = networkPort;
      length = sizeof(sockaddr_in6);
    } else {
      auto& address = reinterpret_cast<sockaddr_in&>(storage);
      address.sin_family = AF_INET;
      address.sin_addr.s_addr = htonl(INADDR_LOOPBACK + (host == TestSocket::Host::kOther ? 1 : 0));
      address.sin_port = networkPort;
      length = sizeof(sockaddr_in);
    }
  }

  [[nodiscard]] const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&storage); }
};

timeval timevalOf(TestSocket::Milliseconds time) {
  timeval value{};
  value.tv_sec = static_cast<decltype(value.tv_sec)>(time.count() / 1000);
  value.tv_usec = static_cast<decltype(value.tv_usec)>(time.count() % 1000 * 1000);
  return value;
}

fd_set setOf(shim::Socket socket) {
  fd_set set;
  FD_ZERO(&set);
  FD_SET(socket, &set);
  return set;
}

/// Each reply leaves at once, however short it is.
void sendWithoutDelay(shim::Socket socket) {
  const int on = 1;
  setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&on), sizeof(on));
}

}  // namespace

TestSocket::TestSocket(TestSocket&& other) noexcept : socket_(std::exchange(other.socket_, kNone)) {
}

TestSocket& TestSocket::operator=(TestSocket&& other) noexcept {
  std::swap(socket_, other.socket_);
  return *this;
}

TestSocket::~TestSocket() {
  close();
}

TestSocket TestSocket::bound(Host host, int port) {
  useLibrary();
  const Loopback address(host, port);
  TestSocket socket(
      static_cast<Native>(::socket(address.storage.ss_family, SOCK_STREAM, IPPROTO_TCP)));
  if (::bind(nativeOf(socket.socket_), address.get(), address.length) != 0) socket.close();
  return socket;
}

TestSocket TestSocket::listen(Host host, int port) {
  TestSocket listener = bound(host, port);
  constexpr int kBacklog = 16;
  if (listener.valid() && ::listen(nativeOf(listener.socket_), kBacklog) != 0) listener.close();
  return listener;
}

TestSocket TestSocket::listenSilently(Host host, int port) {
  TestSocket listener = bound(host, port);
  const Loopback address(host, listener.port());
  if (::listen(nativeOf(listener.socket_), 0) != 0) listener.close();
  const auto waiting = ::socket(address.storage.ss_family, SOCK_STREAM, IPPROTO_TCP);
  ::connect(waiting, address.get(), address.length);
  shim::closeSocket(waiting);  // waits on, until it is accepted
  return listener;
}

TestSocket TestSocket::connect(Host host, int port) {
  TestSocket socket = bound(host, 0);
  const Loopback address(host == Host::kOther ? Host::kIpv4 : host, port);
  if (::connect(nativeOf(socket.socket_), address.get(), address.length) != 0) socket.close();
  return socket;
}

bool TestSocket::valid() const {
  return socket_ != kNone;
}

int TestSocket::port() const {
  sockaddr_storage storage{};
  shim::Length length = sizeof(storage);
  getsockname(nativeOf(socket_), reinterpret_cast<sockaddr*>(&storage), &length);
  return storage.ss_family == AF_INET6
             ? ntohs(reinterpret_cast<const sockaddr_in6&>(storage).sin6_port)
             : ntohs(reinterpret_cast<const sockaddr_in&>(storage).sin_port);
}

TestSocket TestSocket::accept(Milliseconds time) const {
  if (!waitReadable(time)) return {};
  const shim::Socket accepted = ::accept(nativeOf(socket_), nullptr, nullptr);
  if (accepted == shim::kNoSocket) return {};
  sendWithoutDelay(accepted);
  return TestSocket(static_cast<Native>(accepted));
}

bool TestSocket::waitReadable(Milliseconds time) const {
  const shim::Socket socket = nativeOf(socket_);
  fd_set readable = setOf(socket);
  timeval limit = timevalOf(time);
  return valid() && select(shim::selectWidth(socket), &readable, nullptr, nullptr, &limit) > 0;
}

bool TestSocket::waitWritable(Milliseconds time) const {
  const shim::Socket socket = nativeOf(socket_);
  fd_set writable = setOf(socket);
  timeval limit = timevalOf(time);
  return valid() && select(shim::selectWidth(socket), nullptr, &writable, nullptr, &limit) > 0;
}

std::string TestSocket::receive(std::size_t limit) const {
  std::string bytes(limit, '\0');
  const auto count =
      ::recv(nativeOf(socket_), bytes.data(), static_cast<shim::Size>(bytes.size()), 0);
  bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  return bytes;
}

std::size_t TestSocket::send(std::string_view bytes) const {
  const auto count = ::send(nativeOf(socket_), bytes.data(), static_cast<shim::Size>(bytes.size()),
                            shim::kSendFlags);
  return count > 0 ? static_cast<std::size_t>(count) : 0;
}

void TestSocket::close() {
  if (valid()) shim::closeSocket(nativeOf(std::exchange(socket_, kNone)));
}

void TestSocket::reset() {
  linger abort{};
  abort.l_onoff = 1;
  if (valid()) {
    setsockopt(nativeOf(socket_), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&abort),
               sizeof(abort));
  }
  close();
}

}  // namespace karvel
