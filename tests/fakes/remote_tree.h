#pragma once

#include <cstddef>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace karvel {

/// The folders and files of a test server, in memory. Paths are absolute, parted by "/"; names are
/// bytes. Safe to use from the test while the server works with it.
class RemoteTree {
 public:
  struct Entry {
    std::string name;
    bool folder;
    std::size_t size;
  };

  /// Adds a folder or a file, and the folders above it.
  void addFolder(const std::string& path);
  void addFile(const std::string& path, std::string content);

  [[nodiscard]] bool isFolder(const std::string& path) const;
  [[nodiscard]] bool isFile(const std::string& path) const;
  [[nodiscard]] std::optional<std::string> content(const std::string& path) const;
  /// What lies directly in a folder, by name.
  [[nodiscard]] std::vector<Entry> entries(const std::string& folder) const;

  // What FTP commands do; false when the server would refuse.
  bool removeFile(const std::string& path);
  bool rename(const std::string& from, const std::string& to);
  /// Creates or replaces a file in an existing folder.
  bool store(const std::string& path, std::string content);

  /// `path` as seen from `folder`, absolute, without "." and "..".
  static std::string resolve(const std::string& folder, const std::string& path);

 private:
  /// Of a file its content, of a folder nothing.
  using Node = std::optional<std::string>;

  [[nodiscard]] bool hasFolder(const std::string& path) const;
  [[nodiscard]] bool hasFile(const std::string& path) const;

  mutable std::mutex mutex_;
  std::map<std::string, Node> nodes_{{"/", std::nullopt}};
};

}  // namespace karvel
