#pragma once

#include <winsock2.h>
#include <ws2tcpip.h>

namespace karvel {

/// What has another name on each platform; the Linux file beside has the same names.
struct SocketShim {
  using Socket = SOCKET;
  static constexpr int kSendFlags = 0;
  static void startLibrary() {
    WSADATA data{};
    [[maybe_unused]] static const int started = WSAStartup(MAKEWORD(2, 2), &data);
  }
  static int poll(pollfd& socket, int milliseconds) { return WSAPoll(&socket, 1, milliseconds); }
  static void close(Socket socket) { ::closesocket(socket); }
};

}  // namespace karvel
