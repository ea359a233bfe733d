#pragma once

#include <set>

#include "platform/profile.h"

namespace karvel {

/// Reads and replaces profile files as a whole. A file beyond 16 MiB counts as unreadable and is
/// never written. The first write to a file deletes what killed programs of the same user have left
/// of their new contents beside it.
class IniProfile final : public Profile {
 public:
  std::string read(const std::string& section, const std::string& key, const std::string& file,
                   std::size_t bufferSize) override;
  bool write(const std::string& section, const std::string& key, const std::string& value,
             const std::string& file) override;

 private:
  std::set<std::string> swept_;
};

}  // namespace karvel
