#pragma once

#include "platform/files.h"

namespace karvel {

class Win32Files final : public Files {
 public:
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
};

}  // namespace karvel
