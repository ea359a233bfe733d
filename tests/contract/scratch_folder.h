#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <string_view>

namespace karvel {

/// A new folder for one test, deleted with all that is in it. It works on files by the C++ library
/// alone, apart from the ports that are tested in it. Names and paths are UTF-8.
class ScratchFolder {
 public:
  /// `name` is a part of the folder's name.
  explicit ScratchFolder(std::string_view name = "表 ソ能") {
    std::random_device random;
    const std::string unique = std::to_string(random()) + "-" + std::to_string(random());
    folder_ = std::filesystem::temp_directory_path() /
              native("karvel test " + std::string(name) + unique);
    std::filesystem::create_directories(folder_);
  }
  ~ScratchFolder() {
    std::error_code ignored;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_)) {
      if (entry.is_symlink()) continue;
      std::filesystem::permissions(entry.path(), std::filesystem::perms::owner_write,
                                   std::filesystem::perm_options::add, ignored);
    }
    std::filesystem::remove_all(folder_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  /// The folder's own path, or that of a name in it.
  [[nodiscard]] std::string path() const { return portable(folder_); }
  [[nodiscard]] std::string path(std::string_view name) const {
    return portable(folder_ / native(name));
  }

  /// Stores a file and gives its path.
  std::string add(std::string_view name, std::string_view content) const {
    std::ofstream(folder_ / native(name), std::ios::binary) << content;
    return path(name);
  }
  std::string addFolder(std::string_view name) const {
    std::filesystem::create_directory(folder_ / native(name));
    return path(name);
  }

  /// A file's content, or empty when it is no file.
  [[nodiscard]] static std::optional<std::string> content(const std::string& path) {
    std::ifstream file(native(path), std::ios::binary);
    if (!file || std::filesystem::is_directory(native(path))) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), {});
  }
  [[nodiscard]] bool has(std::string_view name) const {
    return std::filesystem::exists(folder_ / native(name));
  }
  /// How many files and folders are directly in it.
  [[nodiscard]] std::size_t entryCount() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder_),
                                                  std::filesystem::directory_iterator()));
  }

 private:
  static std::filesystem::path native(std::string_view utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
  }
  static std::string portable(const std::filesystem::path& path) {
    const std::u8string utf8 = path.u8string();
    return {utf8.begin(), utf8.end()};
  }

  std::filesystem::path folder_;
};

}  // namespace karvel
