#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "platform/linux/system/file_descriptor.h"

namespace karvel {

/// Reads a local file for an upload.
///
/// libcurl sends every LF of a text as CR LF. In text mode the reader therefore gives a CR LF of
/// the file as LF alone, so that each line end is CR LF on the wire, whichever the file has.
class UploadReader {
 public:
  enum class Mode { kBinary, kText };

  /// Empty when the path is no ordinary file or cannot be opened.
  static std::optional<UploadReader> open(const std::string& path, Mode mode);

  /// Fills up to `capacity` bytes (at least 2); 0 at the end; empty when the file fails.
  std::optional<std::size_t> read(char* buffer, std::size_t capacity);

 private:
  UploadReader(FileDescriptor file, Mode mode) : file_(std::move(file)), mode_(mode) {}

  [[nodiscard]] std::optional<std::size_t> readBytes(char* buffer, std::size_t capacity) const;
  std::optional<std::size_t> readText(char* buffer, std::size_t capacity);
  bool refill();

  FileDescriptor file_;
  Mode mode_;
  bool heldReturn_ = false;  ///< a CR that waits for what follows it
  std::array<char, 16 * 1024> chunk_{};
  std::size_t next_ = 0;  ///< the part of chunk_ that is still to be given
  std::size_t end_ = 0;
};

}  // namespace karvel
