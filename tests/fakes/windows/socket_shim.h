#pragma once

// What the sockets of this platform are called; the Linux file beside has the same names.

#include <winsock2.h>
#include <ws2tcpip.h>

namespace karvel::shim {

using Socket = SOCKET;
using Length = int;
using Size = int;  ///< of the buffers of send() and recv()

inline constexpr Socket kNoSocket = INVALID_SOCKET;
inline constexpr int kSendFlags = 0;
inline constexpr int kShutdownSend = SD_SEND;

inline void closeSocket(Socket socket) {
  ::closesocket(socket);
}

/// The first argument of select(), which is ignored here.
inline int selectWidth(Socket /*socket*/) {
  return 0;
}

/// Keeps the socket library in use.
class Library {
 public:
  Library() {
    WSADATA data{};
    WSAStartup(MAKEWORD(2, 2), &data);
  }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library() { WSACleanup(); }
};

}  // namespace karvel::shim
