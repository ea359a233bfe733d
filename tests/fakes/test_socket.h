#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace karvel {

/// A TCP socket on the loopback interface, for servers that tests start in their own process.
class TestSocket {
 public:
  using Milliseconds = std::chrono::milliseconds;
  /// 127.0.0.1, ::1, and 127.0.0.2, which stands for another machine.
  enum class Host { kIpv4, kIpv6, kOther };

  TestSocket() = default;
  TestSocket(TestSocket&& other) noexcept;
  TestSocket& operator=(TestSocket&& other) noexcept;
  ~TestSocket();

  /// Listens, on a free port unless one is given; invalid when it is taken.
  static TestSocket listen(Host host, int port = 0);
  /// Listens, but answers nobody: the one connection that may wait is there already.
  static TestSocket listenSilently(Host host, int port = 0);
  /// Connects to a port of kIpv4 or kIpv6, and comes from there or from kOther.
  static TestSocket connect(Host host, int port);

  [[nodiscard]] bool valid() const;
  [[nodiscard]] int port() const;  ///< the local one

  /// The next connection; invalid when none comes in time.
  [[nodiscard]] TestSocket accept(Milliseconds time) const;

  [[nodiscard]] bool waitReadable(Milliseconds time) const;
  [[nodiscard]] bool waitWritable(Milliseconds time) const;
  /// What is there, at most `limit` bytes; empty at the end of the connection.
  [[nodiscard]] std::string receive(std::size_t limit) const;
  /// The number of bytes sent, which may be fewer than given; 0 when the connection is gone.
  [[nodiscard]] std::size_t send(std::string_view bytes) const;
  void close();
  /// Closes so that the peer sees a reset.
  void reset();

 private:
  // As wide as any platform's socket; the platform's own type stays in the source file.
  using Native = std::intptr_t;
  static constexpr Native kNone = -1;

  explicit TestSocket(Native socket) : socket_(socket) {}
  static TestSocket bound(Host host, int port);

  Native socket_ = kNone;
};

}  // namespace karvel
