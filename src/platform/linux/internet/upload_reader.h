#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/linux/system/file_descriptor.h"

namespace karvel {

/// How a file goes over the wire, with the letter of the command TYPE.
enum class TransferType : char { kText = 'A', kBinary = 'I' };

/// Reads a local file for an upload, piece by piece. In text mode every LF without a CR before it
/// gets one; all else stays as it is.
class UploadReader {
 public:
  /// Empty when the path is no ordinary file or cannot be opened.
  [[nodiscard]] static std::optional<UploadReader> open(const std::string& path, TransferType type);

  [[nodiscard]] TransferType type() const { return type_; }
  /// The file's size in bytes when it was opened.
  [[nodiscard]] std::uint64_t size() const { return size_; }
  /// The next piece, which stays until the next call; "" at the end; empty when the file fails.
  [[nodiscard]] std::optional<std::string_view> next();

 private:
  UploadReader(FileDescriptor file, TransferType type, std::uint64_t size)
      : file_(std::move(file)), type_(type), size_(size) {}

  FileDescriptor file_;
  TransferType type_;
  std::uint64_t size_;
  bool afterReturn_ = false;
  std::string piece_;
};

}  // namespace karvel
