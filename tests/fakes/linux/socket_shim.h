#pragma once

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace karvel {

/// What has another name on each platform; the Windows file beside has the same names.
struct SocketShim {
  using Socket = int;
  static constexpr int kSendFlags = MSG_NOSIGNAL;
  static void startLibrary() {}
  static int poll(pollfd& socket, int milliseconds) { return ::poll(&socket, 1, milliseconds); }
  static void close(Socket socket) { ::close(socket); }
};

}  // namespace karvel
