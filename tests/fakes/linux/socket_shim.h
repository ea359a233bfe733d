#pragma once

// What has another name on each platform; the Windows file beside has the same names.

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace karvel::shim {

using Socket = int;
inline constexpr int kSendFlags = MSG_NOSIGNAL;

inline void startLibrary() {
}
inline int poll(pollfd& socket, int milliseconds) {
  return ::poll(&socket, 1, milliseconds);
}
inline void closeSocket(Socket socket) {
  ::close(socket);
}

}  // namespace karvel::shim
