#pragma once

#include <string>

namespace karvel {

/// A path for a byte-oriented Windows function. Where the system's code page lacks one of its
/// characters it is the file's name alone, and the file's folder is the process's current one as
/// long as this lives. A name that the code page lacks is one that no file has.
class AnsiPath {
 public:
  explicit AnsiPath(const std::string& utf8Path);
  AnsiPath(const AnsiPath&) = delete;
  AnsiPath& operator=(const AnsiPath&) = delete;
  ~AnsiPath();

  [[nodiscard]] const char* bytes() const { return bytes_.c_str(); }

 private:
  std::string bytes_;
  std::wstring folderBefore_;
};

}  // namespace karvel
