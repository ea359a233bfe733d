#pragma once

#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <utility>

namespace karvel {

/// An open file descriptor, closed when it goes out of scope. -1 is none.
class FileDescriptor {
 public:
  explicit FileDescriptor(int descriptor = -1) : descriptor_(descriptor) {}
  FileDescriptor(FileDescriptor&& other) noexcept
      : descriptor_(std::exchange(other.descriptor_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  ~FileDescriptor() { close(); }

  [[nodiscard]] int get() const { return descriptor_; }
  [[nodiscard]] bool valid() const { return descriptor_ >= 0; }

  /// Writes all of it, in as many calls as the system needs.
  [[nodiscard]] bool writeAll(std::string_view content) const {
    while (!content.empty()) {
      const ssize_t count = ::write(descriptor_, content.data(), content.size());
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) return false;
      content.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
  }

  /// False when the file system reports a write error only now.
  bool close() {
    const int descriptor = std::exchange(descriptor_, -1);
    return descriptor < 0 || ::close(descriptor) == 0;
  }

 private:
  int descriptor_;
};

}  // namespace karvel
