#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace karvel {

/// A TCP socket on the loopback interface, for servers that tests start in their own process.
class TestSocket {
 public:
  static constexpr const char* kIpv4 = "127.0.0.1";
  static constexpr const char* kIpv6 = "::1";
  static constexpr const char* kOther = "127.0.0.2";  ///< stands for another machine

  TestSocket() = default;
  TestSocket(TestSocket&& other) noexcept : socket_(std::exchange(other.socket_, kNone)) {}
  TestSocket& operator=(TestSocket&& other) noexcept {
    std::swap(socket_, other.socket_);
    return *this;
  }
  ~TestSocket() { close(); }

  /// Listens, on a free port unless one is given; invalid when it is taken.
  static TestSocket listen(const char* host, int port = 0, int backlog = 16);
  /// Listens, but answers nobody: the one connection that may wait is there already.
  static TestSocket listenSilently(const char* host, int port = 0);
  /// Holds a free port which connect() can come from again and again.
  static TestSocket hold(const char* host) { return bound(host, 0, true); }
  static TestSocket connect(const char* host, int port, const char* from, int fromPort = 0);

  [[nodiscard]] bool valid() const { return socket_ != kNone; }
  [[nodiscard]] int port() const;  ///< the local one

  /// The next connection; invalid when none comes in time.
  [[nodiscard]] TestSocket accept(std::chrono::milliseconds time) const;
  [[nodiscard]] bool waitReadable(std::chrono::milliseconds time) const {
    return wait(false, time);
  }
  [[nodiscard]] bool waitWritable(std::chrono::milliseconds time) const { return wait(true, time); }
  /// What is there, at most `limit` bytes; empty at the end of the connection.
  [[nodiscard]] std::string receive(std::size_t limit) const;
  /// The number of bytes sent, which may be fewer than given; 0 when the connection is gone.
  [[nodiscard]] std::size_t send(std::string_view bytes) const;
  void close();
  /// Closes so that the peer sees a reset. No side then keeps its port for a while (TIME_WAIT).
  void reset();

 private:
  // As wide as any platform's socket; the platform's own type stays in the source file.
  using Native = std::intptr_t;
  static constexpr Native kNone = -1;

  static TestSocket bound(const char* host, int port, bool shared = false);
  [[nodiscard]] bool wait(bool toSend, std::chrono::milliseconds time) const;

  Native socket_ = kNone;
};

}  // namespace karvel
