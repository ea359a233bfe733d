#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/files.h"
#include "text/path.h"
#include "text/strings.h"

namespace karvel {

/// A file system in memory. Folders must be made before files go into them.
class FakeFiles final : public Files {
 public:
  struct File {
    std::string content;
    bool readOnly = false;
    bool operator==(const File&) const = default;
  };

  std::map<std::string, File> files;
  std::set<std::string> folders;
  std::set<std::string> unwritable;  ///< paths that refuse to be written
  std::vector<std::string> written;  ///< paths in the order of their writing
  std::function<bool()> fault;       ///< asked before each call that can fail; true makes it fail

  static std::string folderOf(const std::string& path) {
    return path.substr(0, path.find_last_of(kSeparator));
  }
  [[nodiscard]] std::optional<std::string> contentOf(const std::string& path) const {
    const auto found = files.find(path);
    return found != files.end() ? std::optional(found->second.content) : std::nullopt;
  }

  bool exists(const std::string& path) override {
    return files.contains(path) || folders.contains(path);
  }
  bool readPieces(const std::string& path, const Consumer& consumer) override {
    const auto content = contentOf(path);
    if (fails() || !content) return false;
    constexpr std::size_t kPiece = 7;
    for (std::size_t at = 0; at < content->size(); at += kPiece) {
      consumer(std::string_view(*content).substr(at, kPiece));
    }
    return true;
  }
  bool write(const std::string& path, std::string_view content) override {
    if (fails() || !canWrite(path)) return false;
    files[path].content = content;
    written.push_back(path);
    return true;
  }
  bool append(const std::string& path, std::string_view content) override {
    if (fails() || !canWrite(path)) return false;
    files[path].content += content;
    return true;
  }
  bool remove(const std::string& path) override {
    return !fails() && !isReadOnly(path) && files.erase(path) == 1;
  }
  void removeMatching(const std::string& folder, const std::string& pattern) override {
    const std::string ending = asciiLower(pattern.substr(1));  // patterns here are "*" + ending
    std::erase_if(files, [&](const auto& file) {
      return folderOf(file.first) == folder && asciiLower(file.first).ends_with(ending) &&
             !file.second.readOnly;
    });
  }
  bool copy(const std::string& source, const std::string& target) override {
    const auto content = contentOf(source);
    return content && write(target, *content);
  }
  bool rename(const std::string& from, const std::string& to) override {
    return copy(from, to) && files.erase(from) == 1;
  }
  std::optional<std::uint32_t> attributes(const std::string& path) override {
    if (folders.contains(path)) return kDirectory;
    if (!files.contains(path)) return std::nullopt;
    return isReadOnly(path) ? kReadOnly : kNormal;
  }
  bool setAttributes(const std::string& path, std::uint32_t attributes) override {
    if (fails() || !files.contains(path)) return false;
    files[path].readOnly = (attributes & kReadOnly) != 0;
    return true;
  }

 private:
  [[nodiscard]] bool fails() const { return fault && fault(); }
  [[nodiscard]] bool isReadOnly(const std::string& path) const {
    return files.contains(path) && files.at(path).readOnly;
  }
  [[nodiscard]] bool canWrite(const std::string& path) const {
    return !isReadOnly(path) && !unwritable.contains(path) && !folders.contains(path) &&
           folders.contains(folderOf(path));
  }
};

}  // namespace karvel
