#pragma once

#include "platform/profile.h"

namespace karvel {

/// The system's own profile functions, where its code page is that of the files. They may pass all
/// of a file through the code page, in which the bytes of another one do not always survive: so
/// elsewhere, and where a file's path cannot be said in the code page, the file's bytes are read
/// and written here.
class Win32Profile final : public Profile {
 public:
  std::string read(const std::string& section, const std::string& key, const std::string& file,
                   std::size_t bufferSize) override;
  bool write(const std::string& section, const std::string& key, const std::string& value,
             const std::string& file) override;
  void removeLeftovers(const std::string&) override {}
};

}  // namespace karvel
