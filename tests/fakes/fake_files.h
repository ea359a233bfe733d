#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>

#include "platform/files.h"

namespace karvel {

/// A file system in memory. Folders must be made before files go into them.
class FakeFiles final : public Files {
 public:
  struct File {
    std::string content;
    bool readOnly = false;
  };

  std::map<std::string, File> files;
  std::set<std::string> folders;
  std::set<std::string> unwritable;  ///< paths that refuse to be written
  std::vector<std::string> written;  ///< paths in the order of their writing
  std::function<bool()> fault;       ///< asked before each call that can fail; true makes it fail

  [[nodiscard]] std::optional<std::string> contentOf(const std::string& path) const;

  bool exists(const std::string& path) override;
  bool readPieces(const std::string& path, const Consumer& consumer) override;
  bool write(const std::string& path, std::string_view content) override;
  bool append(const std::string& path, std::string_view content) override;
  bool remove(const std::string& path) override;
  void removeMatching(const std::string& folder, const std::string& pattern) override;
  bool copy(const std::string& source, const std::string& target) override;
  bool rename(const std::string& from, const std::string& to) override;
  std::optional<std::uint32_t> attributes(const std::string& path) override;
  bool setAttributes(const std::string& path, std::uint32_t attributes) override;

 private:
  [[nodiscard]] bool fails() const { return fault && fault(); }
  [[nodiscard]] bool canWrite(const std::string& path) const;
};

}  // namespace karvel
