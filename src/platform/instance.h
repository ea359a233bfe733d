#pragma once

#include <string>

namespace karvel {

/// One running program per program folder, user and machine. Nobody else can take the lock, so no
/// other user can keep the program from starting.
class Instance {
 public:
  virtual ~Instance() = default;

  /// True unless another process of this user holds the folder. This one then holds it until it
  /// ends, however it ends. Writes nothing into the folder. Where the system offers no place for a
  /// lock the program starts without one, and says so on standard error.
  [[nodiscard]] virtual bool acquire(const std::string& programFolder) = 0;
};

}  // namespace karvel
