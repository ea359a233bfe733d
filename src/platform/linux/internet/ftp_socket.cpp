#include "platform/linux/internet/ftp_socket.h"

#include <sys/socket.h>

#include <cerrno>
#include <utility>

namespace karvel {
namespace {

constexpr int kStream = SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC;

bool isForLater(int error) {
  return error == EAGAIN || error == EWOULDBLOCK || error == EINTR;
}

/// What has become of a connect that was begun.
int pendingError(int descriptor) {
  int error = 0;
  socklen_t length = sizeof error;
  return getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &error, &length) == 0 ? error : errno;
}

}  // namespace

FtpSocket FtpSocket::connect(const SocketAddress& address, const FtpTimeWatch& watch,
                             Internet::ErrorNumber& error) {
  FtpSocket socket(::socket(address.storage.ss_family, kStream, 0));
  const int descriptor = socket.descriptor_.get();
  int result = ::connect(descriptor, address.get(), address.length) == 0 ? 0 : errno;
  if (result == EINPROGRESS) {
    pollfd connected = socket.awaiting(POLLOUT);
    result = waitFor({&connected, 1}, watch) ? pendingError(descriptor) : ETIMEDOUT;
  }
  if (result == 0) return socket;
  error = result == ETIMEDOUT ? Internet::kErrorTimeout : Internet::kErrorCannotConnect;
  return {};
}

FtpSocket FtpSocket::listen(SocketAddress address) {
  address.setPort(0);
  FtpSocket socket(::socket(address.storage.ss_family, kStream, 0));
  const int descriptor = socket.descriptor_.get();
  constexpr int kBacklog = 4;
  const bool listens =
      ::bind(descriptor, address.get(), address.length) == 0 && ::listen(descriptor, kBacklog) == 0;
  return listens ? std::move(socket) : FtpSocket();
}

FtpSocket FtpSocket::accept(SocketAddress& peer) const {
  peer = {};
  return FtpSocket(
      ::accept4(descriptor_.get(), peer.get(), &peer.length, SOCK_NONBLOCK | SOCK_CLOEXEC));
}

SocketAddress FtpSocket::local() const {
  SocketAddress address;
  getsockname(descriptor_.get(), address.get(), &address.length);
  return address;
}

SocketAddress FtpSocket::peer() const {
  SocketAddress address;
  getpeername(descriptor_.get(), address.get(), &address.length);
  return address;
}

std::optional<std::size_t> FtpSocket::receive(std::span<char> buffer) const {
  errno = 0;
  const ssize_t count = ::recv(descriptor_.get(), buffer.data(), buffer.size(), 0);
  if (count > 0) return static_cast<std::size_t>(count);
  if (count < 0 && isForLater(errno)) return 0;
  return std::nullopt;
}

std::optional<std::size_t> FtpSocket::send(std::string_view bytes) const {
  const ssize_t count = ::send(descriptor_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
  if (count >= 0) return static_cast<std::size_t>(count);
  return isForLater(errno) ? std::optional<std::size_t>(0) : std::nullopt;
}

bool waitFor(std::span<pollfd> sockets, const FtpTimeWatch& watch) {
  // Even a socket that is ready at all times must not outlast the watch.
  for (auto left = watch.remaining(); left.count() > 0; left = watch.remaining()) {
    if (poll(sockets.data(), sockets.size(), static_cast<int>(left.count())) > 0) return true;
  }
  return false;
}

}  // namespace karvel
