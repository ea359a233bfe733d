#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace karvel {

/// The file system.
///
/// Paths are UTF-8 with the platform's separator; contents are bytes. No call throws: failure is a
/// false or empty result and leaves the file system as it was, unless a call says otherwise. A
/// read-only file has the attribute ReadOnly (Linux: no write permission for its owner); it can be
/// neither written nor deleted, not even by a privileged user.
///
/// Linux never writes through a symbolic link at the end of a path: write() and copy() replace the
/// link, append() fails. (On Windows, making such a link takes a
/// privilege.)
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

  /// Receives a file piece by piece; a piece is valid during the call only.
  using Consumer = std::function<void(std::string_view)>;

  virtual ~Files() = default;

  /// True when there is a file or folder at the path.
  [[nodiscard]] virtual bool exists(const std::string& path) = 0;

  /// Passes the content to `consumer` in pieces of at most 256 KiB. False when the path is not an
  /// ordinary file or cannot be read to its end; pieces read before the failure have been passed.
  [[nodiscard]] virtual bool readPieces(const std::string& path, const Consumer& consumer) = 0;

  /// Creates the file or replaces its content. On failure the old content may be lost and a part of
  /// the new one remain.
  [[nodiscard]] virtual bool write(const std::string& path, std::string_view content) = 0;

  /// Adds to the end of the file, creating it when missing. Nothing is buffered in the process.
  [[nodiscard]] virtual bool append(const std::string& path, std::string_view content) = 0;

  /// Deletes a file. False when it is missing, read-only or a folder.
  virtual bool remove(const std::string& path) = 0;

  /// Deletes every file directly in `folder` whose name matches `pattern` (see
  /// text/wildcard.h); files that cannot be deleted stay.
  virtual void removeMatching(const std::string& folder, const std::string& pattern) = 0;

  /// Copies the content of `source` to `target`, replacing it. If copying fails midway, the partial
  /// target is deleted.
  [[nodiscard]] virtual bool copy(const std::string& source, const std::string& target) = 0;

  /// Gives a file another name in its folder, replacing a file of that name in one step. False,
  /// with both as they were, when `to` is read-only or a folder.
  [[nodiscard]] virtual bool rename(const std::string& from, const std::string& to) = 0;

  /// The attribute bits above, or empty when the path is missing.
  [[nodiscard]] virtual std::optional<std::uint32_t> attributes(const std::string& path) = 0;

  /// Sets or clears ReadOnly, Hidden and System (Linux: ReadOnly only). False when the path is
  /// missing or the change is refused.
  virtual bool setAttributes(const std::string& path, std::uint32_t attributes) = 0;
};

}  // namespace karvel
