#include "platform/linux/desktop/qt_display.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <xcb/xcb.h>

#include <QDir>
#include <QLibraryInfo>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "platform/linux/system/file_descriptor.h"

namespace karvel {
namespace {

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

bool xServerAnswers() {
  if (environment("DISPLAY").empty()) return false;
  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  const bool answers = xcb_connection_has_error(connection) == 0;
  xcb_disconnect(connection);
  return answers;
}

std::string waylandSocket() {
  std::string name = environment("WAYLAND_DISPLAY");
  if (name.empty() || name.front() == '/') return name;
  const std::string folder = environment("XDG_RUNTIME_DIR");
  return folder.empty() ? "" : folder + "/" + name;
}

bool waylandSupported() {
  const QDir plugins(QLibraryInfo::path(QLibraryInfo::PluginsPath) + QStringLiteral("/platforms"));
  return !plugins.entryList({QStringLiteral("libqwayland*.so")}, QDir::Files).isEmpty();
}

bool waylandAnswers() {
  if (!waylandSupported()) return false;
  const std::string path = waylandSocket();
  sockaddr_un address{};
  if (path.empty() || path.size() >= sizeof address.sun_path) return false;
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, path.c_str(), path.size());
  const FileDescriptor descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  return connect(descriptor.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) ==
         0;
}

}  // namespace

bool findDisplay() {
  const std::string chosen = environment("QT_QPA_PLATFORM");
  if (chosen.starts_with("xcb")) return xServerAnswers();
  if (chosen.starts_with("wayland")) return waylandAnswers();
  if (!chosen.empty() || xServerAnswers()) return true;
  if (!waylandAnswers()) return false;
  setenv("QT_QPA_PLATFORM", "wayland", 0);
  return true;
}

}  // namespace karvel
