#pragma once

#include <string>

namespace karvel {

/// One running program per program folder.
class Instance {
 public:
  virtual ~Instance() = default;

  /// True when no other process holds the folder; this one then holds it until it ends, however it
  /// ends. Leaves no file behind that could outlive the process.
  [[nodiscard]] virtual bool acquire(const std::string& programFolder) = 0;
};

}  // namespace karvel
