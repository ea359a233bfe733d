#include "platform/linux/internet/upload_reader.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>

namespace karvel {

std::optional<UploadReader> UploadReader::open(const std::string& path, TransferType type) {
  // Without O_NONBLOCK the mere opening of a pipe would wait for its other end.
  FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!file.valid() || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  return UploadReader(std::move(file), type, static_cast<std::uint64_t>(status.st_size));
}

std::optional<std::string_view> UploadReader::next() {
  std::array<char, 16 * 1024> bytes;
  ssize_t count = 0;
  do {
    count = ::read(file_.get(), bytes.data(), bytes.size());
  } while (count < 0 && errno == EINTR);
  if (count < 0) return std::nullopt;

  const std::string_view read(bytes.data(), static_cast<std::size_t>(count));
  if (type_ == TransferType::kBinary) return piece_ = read;
  piece_.clear();
  for (const char c : read) {
    if (c == '\n' && !afterReturn_) piece_ += '\r';
    piece_ += c;
    afterReturn_ = c == '\r';
  }
  return piece_;
}

}  // namespace karvel
