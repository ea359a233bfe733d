#pragma once

#include <cstddef>
#include <string>

namespace karvel {

/// Profile files in INI format, one value at a time. Other programs may change them at any time.
///
/// Sections, keys and values are bytes of code page 932; a file is named by its full path in
/// UTF-8. Section and key names are compared ignoring ASCII case; blanks and tabs around section,
/// key and value are ignored; one pair of enclosing quotes, single or double, is taken off a value;
/// of several sections or keys of one name the first wins; a line without "=" is not a key.
class Profile {
 public:
  virtual ~Profile() = default;

  /// The value, cut after `bufferSize` - 1 bytes; empty when the file, the section or the key is
  /// missing. Never fails.
  [[nodiscard]] virtual std::string read(const std::string& section, const std::string& key,
                                         const std::string& file, std::size_t bufferSize) = 0;

  /// Sets the value, creating file, section and key as needed. Every other line stays. False, with
  /// the file unchanged, when it cannot be opened for writing or is read-only.
  ///
  /// Linux leaves a file alone that has the value already, and otherwise replaces it as a whole: a
  /// reader sees the old content or the new one, and what another program writes meanwhile is kept
  /// (false if that happens again and again). Where the new file could not have the old one's owner
  /// and group, or the folder takes no new file, it overwrites the file in place, as Windows does.
  /// A symbolic link to a settings file is followed; one that leads nowhere is replaced by the
  /// file. A new file is readable by its owner alone, on Windows by the rights of its folder.
  [[nodiscard]] virtual bool write(const std::string& section, const std::string& key,
                                   const std::string& value, const std::string& file) = 0;

  /// Deletes what programs of the same user that were killed in a write have left of their new
  /// contents beside the file. Windows leaves nothing.
  virtual void removeLeftovers(const std::string& file) = 0;
};

}  // namespace karvel
