#pragma once

#include <poll.h>

#include <chrono>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "platform/internet.h"
#include "platform/linux/internet/socket_address.h"
#include "platform/linux/system/file_descriptor.h"

namespace karvel {

using Deadline = std::chrono::steady_clock::time_point;

/// A TCP socket. Only connect() and await() block, and those no longer than their deadline.
class FtpSocket {
 public:
  FtpSocket() = default;

  /// Connects to the first of the addresses that answers; each gets a fair share of the time. 0, or
  /// the port's number and an invalid socket: kErrorNameNotResolved when there are no addresses,
  /// kErrorTimeout after silence, otherwise kErrorCannotConnect.
  [[nodiscard]] Internet::ErrorNumber connect(const SocketAddresses& addresses, Deadline deadline);
  /// Listens at that address on a free port; invalid when that fails.
  [[nodiscard]] static FtpSocket listen(SocketAddress address);
  /// A connection that waits; invalid when there is none.
  [[nodiscard]] FtpSocket accept() const;

  [[nodiscard]] bool valid() const { return descriptor_.valid(); }
  [[nodiscard]] SocketAddress local() const { return addressBy(getsockname); }
  [[nodiscard]] SocketAddress peer() const { return addressBy(getpeername); }

  struct Moved {
    std::size_t count = 0;  ///< bytes; 0 when the socket was not ready
    /// The connection is over: 0 when the other side has ended it in order, otherwise the port's
    /// number.
    std::optional<Internet::ErrorNumber> end;
  };
  [[nodiscard]] Moved receive(std::span<char> buffer) const;
  [[nodiscard]] Moved send(std::string_view bytes) const;

  /// For waitFor(), with POLLIN or POLLOUT. Never ready with 0, nor when the socket is invalid.
  [[nodiscard]] pollfd awaiting(short events) const;
  /// waitFor() this socket alone.
  [[nodiscard]] bool await(short events, Deadline deadline) const;
  void close() { descriptor_.close(); }

 private:
  explicit FtpSocket(int descriptor) : descriptor_(descriptor) {}
  /// 0 or the system's error number.
  [[nodiscard]] int connectTo(const SocketAddress& address, Deadline deadline) const;
  [[nodiscard]] SocketAddress addressBy(decltype(getsockname)* ask) const;

  FileDescriptor descriptor_;
};

/// Waits until one of the sockets is ready; false when the deadline has come before.
[[nodiscard]] bool waitFor(std::span<pollfd> sockets, Deadline deadline);

}  // namespace karvel
