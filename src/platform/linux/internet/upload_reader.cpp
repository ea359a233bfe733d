#include "platform/linux/internet/upload_reader.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

namespace karvel {

std::optional<UploadReader> UploadReader::open(const std::string& path, Mode mode) {
  // Without O_NONBLOCK the mere opening of a pipe would wait for its other end.
  FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!file.valid() || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  return UploadReader(std::move(file), mode);
}

std::optional<std::size_t> UploadReader::read(char* buffer, std::size_t capacity) {
  return mode_ == Mode::kText ? readText(buffer, capacity) : readBytes(buffer, capacity);
}

std::optional<std::size_t> UploadReader::readBytes(char* buffer, std::size_t capacity) const {
  ssize_t count = 0;
  do {
    count = ::read(file_.get(), buffer, capacity);
  } while (count < 0 && errno == EINTR);
  if (count < 0) return std::nullopt;
  return static_cast<std::size_t>(count);
}

std::optional<std::size_t> UploadReader::readText(char* buffer, std::size_t capacity) {
  std::size_t filled = 0;
  while (filled + 2 <= capacity) {
    if (next_ == end_ && !refill()) return std::nullopt;
    if (next_ == end_) break;
    const char c = chunk_[next_++];
    if (heldReturn_ && c != '\n') buffer[filled++] = '\r';
    heldReturn_ = c == '\r';
    if (!heldReturn_) buffer[filled++] = c;
  }
  if (filled == 0 && heldReturn_) {
    heldReturn_ = false;
    buffer[filled++] = '\r';
  }
  return filled;
}

bool UploadReader::refill() {
  const auto count = readBytes(chunk_.data(), chunk_.size());
  next_ = 0;
  end_ = count.value_or(0);
  return count.has_value();
}

}  // namespace karvel
