#pragma once

#include <poll.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "platform/internet.h"
#include "platform/linux/internet/ftp_time_watch.h"
#include "platform/linux/internet/socket_address.h"
#include "platform/linux/system/file_descriptor.h"

namespace karvel {

/// A TCP socket. None of its operations blocks but connect(); waitFor() tells when one is ready.
class FtpSocket {
 public:
  FtpSocket() = default;

  /// Connects within the watch's time. On failure the socket is invalid and `error` has the
  /// port's number: kErrorTimeout after silence, otherwise kErrorCannotConnect.
  [[nodiscard]] static FtpSocket connect(const SocketAddress& address, const FtpTimeWatch& watch,
                                         Internet::ErrorNumber& error);
  /// Listens at that address on a free port; invalid when that fails.
  [[nodiscard]] static FtpSocket listen(SocketAddress address);
  /// A connection that waits, and where it comes from; invalid when there is none.
  [[nodiscard]] FtpSocket accept(SocketAddress& peer) const;

  [[nodiscard]] bool valid() const { return descriptor_.valid(); }
  [[nodiscard]] SocketAddress local() const;
  [[nodiscard]] SocketAddress peer() const;

  /// The number of bytes taken or given, 0 when the socket was not ready. Empty when the
  /// connection is over: errno tells why, 0 stands for an orderly end.
  [[nodiscard]] std::optional<std::size_t> receive(std::span<char> buffer) const;
  [[nodiscard]] std::optional<std::size_t> send(std::string_view bytes) const;

  void close() { descriptor_.close(); }
  /// For waitFor(); an invalid socket is never ready.
  [[nodiscard]] pollfd awaiting(short events) const { return {descriptor_.get(), events, 0}; }

 private:
  explicit FtpSocket(int descriptor) : descriptor_(descriptor) {}

  FileDescriptor descriptor_;
};

/// Waits until one of the sockets is ready; false when the watch's time is up before.
[[nodiscard]] bool waitFor(std::span<pollfd> sockets, const FtpTimeWatch& watch);

}  // namespace karvel
