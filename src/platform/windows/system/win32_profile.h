#pragma once

#include "platform/profile.h"

namespace karvel {

/// The system's own profile functions. Their bytes are of the system's code page, which the
/// profile files of this program share on a Japanese Windows.
class Win32Profile final : public Profile {
 public:
  std::string read(const std::string& section, const std::string& key, const std::string& file,
                   std::size_t bufferSize) override;
  bool write(const std::string& section, const std::string& key, const std::string& value,
             const std::string& file) override;
  void removeLeftovers(const std::string&) override {}
};

}  // namespace karvel
