#pragma once

#include "platform/instance.h"
#include "platform/windows/system/win32_handle.h"

namespace karvel {

/// A mutex whose name stands for the program folder, in whatever session of the machine the program
/// runs; the system drops it with the process.
class MutexInstance final : public Instance {
 public:
  bool acquire(const std::string& programFolder) override;

 private:
  Win32Handle mutex_;
};

}  // namespace karvel
