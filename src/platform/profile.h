#pragma once

#include <cstddef>
#include <string>

namespace karvel {

/// Profile files in INI format, one value at a time.
///
/// Sections, keys and values are bytes of code page 932; a file is named by its full path in
/// UTF-8. Section and key names match without regard to ASCII letter case; blanks and tabs around
/// section, key and value do not count; one pair of enclosing quotes of the same kind, single or
/// double, is taken off a value; of several sections or keys of one name the first wins; a line
/// without "=" is no key.
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
  /// Linux replaces the file as a whole, so a reader sees the old content or the new one; where the
  /// new file could not have the old one's owner and group, or the folder takes no new file, it
  /// writes into the file as Windows does. It makes a new one readable by its owner alone, Windows
  /// with the rights of its folder.
  [[nodiscard]] virtual bool write(const std::string& section, const std::string& key,
                                   const std::string& value, const std::string& file) = 0;
};

}  // namespace karvel
