#include "contract/scratch_folder.h"

#include <atomic>
#include <chrono>
#include <fstream>
#include <iterator>

namespace karvel {
namespace {

namespace fs = std::filesystem;

fs::path native(std::string_view utf8) {
  return {std::u8string(utf8.begin(), utf8.end())};
}

std::string portable(const fs::path& path) {
  const std::u8string utf8 = path.u8string();
  return {utf8.begin(), utf8.end()};
}

/// Apart from every other folder of this process and, by the time of day, of others.
std::string uniqueSuffix() {
  static std::atomic<int> count{0};
  const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
  return std::to_string(now) + "-" + std::to_string(++count);
}

void makeDeletable(const fs::path& folder) {
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    std::error_code ignored;
    if (!entry.is_symlink())
      fs::permissions(entry.path(), fs::perms::owner_write, fs::perm_options::add, ignored);
  }
}

}  // namespace

ScratchFolder::ScratchFolder(std::string_view name)
    : folder_(fs::temp_directory_path() /
              native("karvel test " + std::string(name) + uniqueSuffix())) {
  fs::create_directories(folder_);
}

ScratchFolder::~ScratchFolder() {
  makeDeletable(folder_);
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

std::string ScratchFolder::path() const {
  return portable(folder_);
}

std::string ScratchFolder::path(std::string_view name) const {
  return portable(folder_ / native(name));
}

std::string ScratchFolder::add(std::string_view name, std::string_view content) const {
  std::ofstream(folder_ / native(name), std::ios::binary) << content;
  return path(name);
}

std::string ScratchFolder::addFolder(std::string_view name) const {
  fs::create_directory(folder_ / native(name));
  return path(name);
}

std::optional<std::string> ScratchFolder::content(const std::string& path) {
  std::ifstream file(native(path), std::ios::binary);
  if (!file || fs::is_directory(native(path))) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(file), {});
}

bool ScratchFolder::has(std::string_view name) const {
  return fs::exists(folder_ / native(name));
}

std::size_t ScratchFolder::entryCount() const {
  return static_cast<std::size_t>(
      std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
}

}  // namespace karvel
