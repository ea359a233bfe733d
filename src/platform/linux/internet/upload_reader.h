#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/linux/system/file_descriptor.h"

namespace karvel {

/// Reads a local file for an upload, piece by piece. In text mode every LF without a CR before it
/// gets one; all else stays as it is.
class UploadReader {
 public:
  enum class Mode { kBinary, kText };

  /// Empty when the path is no ordinary file or cannot be opened.
  [[nodiscard]] static std::optional<UploadReader> open(const std::string& path, Mode mode);

  /// The file's size in bytes when it was opened.
  [[nodiscard]] std::uint64_t size() const { return size_; }
  /// The next piece, which stays until the next call; "" at the end; empty when the file fails.
  [[nodiscard]] std::optional<std::string_view> next();

 private:
  UploadReader(FileDescriptor file, Mode mode, std::uint64_t size)
      : file_(std::move(file)), mode_(mode), size_(size) {}

  FileDescriptor file_;
  Mode mode_;
  std::uint64_t size_;
  bool afterReturn_ = false;
  std::string piece_;
};

}  // namespace karvel
