#pragma once

#include "platform/instance.h"
#include "platform/windows/system/win32_handle.h"

namespace karvel {

/// An open file in the user's local application data, which nobody else may open meanwhile. The
/// system deletes it with the process.
class UserInstance final : public Instance {
 public:
  bool acquire(const std::string& programFolder) override;

  /// True while a process of this user holds the folder. Keeps no lock and leaves nothing behind.
  [[nodiscard]] static bool held(const std::string& programFolder);

 private:
  Win32Handle lock_;
};

}  // namespace karvel
