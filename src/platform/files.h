#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace karvel {

/// The file system as the system needs it.
///
/// Paths are UTF-8 with the platform's separator; contents are bytes. No call throws: a failure
/// is a false or empty result that leaves what was there before as it was, unless a call says
/// otherwise. A read-only file is one whose attribute ReadOnly is set (Linux: its owner has no
/// write permission); it can be neither written nor deleted, whoever runs the program.
class Files {
 public:
  /// Attribute bits, with the values of the Windows file attributes.
  enum Attribute : std::uint32_t {
    kNormal = 0,
    kReadOnly = 0x01,
    kHidden = 0x02,
    kSystem = 0x04,
    kDirectory = 0x10,
  };

  /// Receives one piece of a file after the other; a piece is valid during the call only.
  using Consumer = std::function<void(std::string_view)>;

  virtual ~Files() = default;

  /// True when a file or folder of that path is there.
  [[nodiscard]] virtual bool exists(const std::string& path) = 0;

  /// Hands the content to `consumer` in pieces of at most 256 KiB. False when the path is no
  /// ordinary file or cannot be read to its end; the pieces read before a failure have been handed
  /// over.
  [[nodiscard]] virtual bool readPieces(const std::string& path, const Consumer& consumer) = 0;

  /// Creates the file or replaces its content. On failure a part of the content may remain.
  [[nodiscard]] virtual bool write(const std::string& path, std::string_view content) = 0;

  /// Adds to the end of the file, creating it when missing. The bytes are with the operating
  /// system when the call returns.
  [[nodiscard]] virtual bool append(const std::string& path, std::string_view content) = 0;

  /// Deletes a file. False when it is missing, read-only or a folder.
  virtual bool remove(const std::string& path) = 0;

  /// Deletes every file directly in `folder` whose name matches `pattern` (see
  /// text/wildcard.h); files that cannot be deleted stay.
  virtual void removeMatching(const std::string& folder, const std::string& pattern) = 0;

  /// Copies the content of `source` to `target`, replacing it. A target that has become incomplete
  /// is deleted.
  [[nodiscard]] virtual bool copy(const std::string& source, const std::string& target) = 0;

  /// The attribute bits above, or empty when the path is missing.
  [[nodiscard]] virtual std::optional<std::uint32_t> attributes(const std::string& path) = 0;

  /// Sets ReadOnly, Hidden and System as given (Linux knows ReadOnly only).
  virtual bool setAttributes(const std::string& path, std::uint32_t attributes) = 0;
};

}  // namespace karvel
