#pragma once

#include "platform/profile.h"

namespace karvel {

/// Reads and replaces profile files as a whole. A file beyond 16 MiB counts as unreadable and is
/// never written.
class IniProfile final : public Profile {
 public:
  std::string read(const std::string& section, const std::string& key, const std::string& file,
                   std::size_t bufferSize) override;
  bool write(const std::string& section, const std::string& key, const std::string& value,
             const std::string& file) override;
  void removeLeftovers(const std::string& file) override;
};

}  // namespace karvel
