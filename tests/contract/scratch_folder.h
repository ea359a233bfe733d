#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace karvel {

/// A new folder for one test, deleted with all that is in it. It works on files by the C++ library
/// alone, apart from the ports that are tested in it.
class ScratchFolder {
 public:
  /// `name` (UTF-8) is a part of the folder's name.
  explicit ScratchFolder(std::string_view name = "表 ソ能");
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  /// The folder's own path, or that of a name (UTF-8) in it.
  [[nodiscard]] std::string path() const;
  [[nodiscard]] std::string path(std::string_view name) const;

  /// Stores a file and gives its path.
  std::string add(std::string_view name, std::string_view content) const;
  std::string addFolder(std::string_view name) const;

  /// A file's content, or empty when it is no file.
  [[nodiscard]] static std::optional<std::string> content(const std::string& path);
  [[nodiscard]] bool has(std::string_view name) const;
  /// How many files and folders are directly in it.
  [[nodiscard]] std::size_t entryCount() const;

 private:
  std::filesystem::path folder_;
};

}  // namespace karvel
