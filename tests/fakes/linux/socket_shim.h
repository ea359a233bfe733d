#pragma once

// What the sockets of this platform are called; the Windows file beside has the same names.

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <unistd.h>

namespace karvel::shim {

using Socket = int;
using Length = socklen_t;
using Size = std::size_t;  ///< of the buffers of send() and recv()

inline constexpr Socket kNoSocket = -1;
inline constexpr int kSendFlags = MSG_NOSIGNAL;
inline constexpr int kShutdownSend = SHUT_WR;

inline void closeSocket(Socket socket) {
  ::close(socket);
}

/// The first argument of select().
inline int selectWidth(Socket socket) {
  return socket + 1;
}

/// Keeps the socket library in use.
class Library {
 public:
  Library() = default;
};

}  // namespace karvel::shim
