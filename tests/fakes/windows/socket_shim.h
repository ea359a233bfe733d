#pragma once

// What has another name on each platform; the Linux file beside has the same names.

#include <winsock2.h>
#include <ws2tcpip.h>

namespace karvel::shim {

using Socket = SOCKET;
inline constexpr int kSendFlags = 0;

inline void startLibrary() {
  WSADATA data{};
  [[maybe_unused]] static const int started = WSAStartup(MAKEWORD(2, 2), &data);
}
inline int poll(pollfd& socket, int milliseconds) {
  return WSAPoll(&socket, 1, milliseconds);
}
inline void closeSocket(Socket socket) {
  ::closesocket(socket);
}

}  // namespace karvel::shim
