#include "fakes/test_socket.h"

#include <memory>

#include "socket_shim.h"

namespace karvel {
namespace {

SocketShim::Socket nativeOf(std::intptr_t socket) {
  return static_cast<SocketShim::Socket>(socket);
}

std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> addressOf(const char* host, int port) {
  addrinfo hints{};
  hints.ai_flags = AI_NUMERICHOST;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* address = nullptr;
  getaddrinfo(host, std::to_string(port).c_str(), &hints, &address);
  return {address, &freeaddrinfo};
}

template <typename Value>
void setOption(SocketShim::Socket socket, int level, int option, const Value& value) {
  setsockopt(socket, level, option, reinterpret_cast<const char*>(&value), sizeof value);
}

}  // namespace

TestSocket TestSocket::bound(const char* host, int port, bool shared) {
  SocketShim::startLibrary();
  const auto address = addressOf(host, port);
  TestSocket socket;
  socket.socket_ = static_cast<Native>(::socket(address->ai_family, SOCK_STREAM, IPPROTO_TCP));
  if (shared) setOption(nativeOf(socket.socket_), SOL_SOCKET, SO_REUSEADDR, 1);
  const auto length = static_cast<socklen_t>(address->ai_addrlen);
  if (::bind(nativeOf(socket.socket_), address->ai_addr, length) != 0) socket.close();
  return socket;
}

TestSocket TestSocket::listen(const char* host, int port, int backlog) {
  TestSocket listener = bound(host, port);
  if (listener.valid() && ::listen(nativeOf(listener.socket_), backlog) != 0) listener.close();
  return listener;
}

TestSocket TestSocket::listenSilently(const char* host, int port) {
  TestSocket listener = listen(host, port, 0);
  connect(host, listener.port(), host);  // though closed, it waits on to be accepted
  return listener;
}

TestSocket TestSocket::connect(const char* host, int port, const char* from, int fromPort) {
  TestSocket socket = bound(from, fromPort, true);
  const auto address = addressOf(host, port);
  const auto length = static_cast<socklen_t>(address->ai_addrlen);
  if (::connect(nativeOf(socket.socket_), address->ai_addr, length) != 0) socket.close();
  return socket;
}

int TestSocket::port() const {
  sockaddr_storage storage{};
  socklen_t length = sizeof storage;
  getsockname(nativeOf(socket_), reinterpret_cast<sockaddr*>(&storage), &length);
  // Both families hold the port at the same place.
  return ntohs(reinterpret_cast<const sockaddr_in&>(storage).sin_port);
}

TestSocket TestSocket::accept(std::chrono::milliseconds time) const {
  TestSocket accepted;
  if (!waitReadable(time)) return accepted;
  accepted.socket_ = static_cast<Native>(::accept(nativeOf(socket_), nullptr, nullptr));
  // Each reply leaves at once, however short it is.
  if (accepted.valid()) setOption(nativeOf(accepted.socket_), IPPROTO_TCP, TCP_NODELAY, 1);
  return accepted;
}

bool TestSocket::wait(bool toSend, std::chrono::milliseconds time) const {
  pollfd awaited{};
  awaited.fd = nativeOf(socket_);
  awaited.events = toSend ? POLLOUT : POLLIN;
  return valid() && SocketShim::poll(awaited, static_cast<int>(time.count())) > 0;
}

std::string TestSocket::receive(std::size_t limit) const {
  std::string bytes(limit, '\0');
  const auto count = ::recv(nativeOf(socket_), bytes.data(), static_cast<int>(limit), 0);
  bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  return bytes;
}

std::size_t TestSocket::send(std::string_view bytes) const {
  const auto count = ::send(nativeOf(socket_), bytes.data(), static_cast<int>(bytes.size()),
                            SocketShim::kSendFlags);
  return count > 0 ? static_cast<std::size_t>(count) : 0;
}

void TestSocket::close() {
  if (valid()) SocketShim::close(nativeOf(std::exchange(socket_, kNone)));
}

void TestSocket::reset() {
  const linger abort{1, 0};
  if (valid()) setOption(nativeOf(socket_), SOL_SOCKET, SO_LINGER, abort);
  close();
}

}  // namespace karvel
