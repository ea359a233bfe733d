#include "platform/linux/internet/ftp_socket.h"

#include <cerrno>
#include <utility>

namespace karvel {
namespace {

constexpr int kFlags = SOCK_NONBLOCK | SOCK_CLOEXEC;

int newSocket(const SocketAddress& address) {
  return ::socket(address.storage.ss_family, SOCK_STREAM | kFlags, 0);
}

FtpSocket::Moved moved(ssize_t count) {
  if (count >= 0) return {static_cast<std::size_t>(count), std::nullopt};
  if (errno == EAGAIN || errno == EINTR) return {};
  const bool reset = errno == ECONNRESET;
  return {0, reset ? Internet::kErrorConnectionReset : Internet::kErrorConnectionAborted};
}

}  // namespace

Internet::ErrorNumber FtpSocket::connect(const SocketAddresses& addresses, Deadline deadline) {
  Internet::ErrorNumber error = Internet::kErrorNameNotResolved;
  auto untried = static_cast<int>(addresses.size());
  for (const SocketAddress& address : addresses) {
    const auto now = Deadline::clock::now();
    *this = FtpSocket(newSocket(address));
    const int result = connectTo(address, now + (deadline - now) / untried--);
    if (result == 0) return 0;
    error = result == ETIMEDOUT ? Internet::kErrorTimeout : Internet::kErrorCannotConnect;
  }
  close();
  return error;
}

int FtpSocket::connectTo(const SocketAddress& address, Deadline deadline) const {
  if (::connect(descriptor_.get(), address.get(), address.length) == 0) return 0;
  if (errno != EINPROGRESS) return errno;
  if (!await(POLLOUT, deadline)) return ETIMEDOUT;
  int error = 0;
  socklen_t length = sizeof error;
  const int asked = getsockopt(descriptor_.get(), SOL_SOCKET, SO_ERROR, &error, &length);
  return asked == 0 ? error : errno;
}

FtpSocket FtpSocket::listen(SocketAddress address) {
  constexpr int kBacklog = 4;
  address.setPort(0);
  FtpSocket socket(newSocket(address));
  const int descriptor = socket.descriptor_.get();
  const bool listens =
      ::bind(descriptor, address.get(), address.length) == 0 && ::listen(descriptor, kBacklog) == 0;
  return listens ? std::move(socket) : FtpSocket();
}

FtpSocket FtpSocket::accept() const {
  return FtpSocket(::accept4(descriptor_.get(), nullptr, nullptr, kFlags));
}

SocketAddress FtpSocket::addressBy(decltype(getsockname)* ask) const {
  SocketAddress address;
  ask(descriptor_.get(), address.get(), &address.length);
  return address;
}

FtpSocket::Moved FtpSocket::receive(std::span<char> buffer) const {
  const ssize_t count = ::recv(descriptor_.get(), buffer.data(), buffer.size(), 0);
  return count == 0 ? Moved{0, 0} : moved(count);
}

FtpSocket::Moved FtpSocket::send(std::string_view bytes) const {
  return moved(::send(descriptor_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL));
}

pollfd FtpSocket::awaiting(short events) const {
  return {events == 0 ? -1 : descriptor_.get(), events, 0};
}

bool FtpSocket::await(short events, Deadline deadline) const {
  pollfd socket = awaiting(events);
  return waitFor({&socket, 1}, deadline);
}

bool waitFor(std::span<pollfd> sockets, Deadline deadline) {
  while (true) {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - Deadline::clock::now());
    // Even a socket that is ready at all times must not outlast the deadline.
    if (left.count() <= 0) return false;
    if (poll(sockets.data(), sockets.size(), static_cast<int>(left.count())) > 0) return true;
  }
}

}  // namespace karvel
