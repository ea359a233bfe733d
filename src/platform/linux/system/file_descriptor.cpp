#include "platform/linux/system/file_descriptor.h"

#include <cerrno>

namespace karvel {

bool FileDescriptor::writeAll(std::string_view content) const {
  while (!content.empty()) {
    const ssize_t count = ::write(descriptor_, content.data(), content.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    content.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

}  // namespace karvel
