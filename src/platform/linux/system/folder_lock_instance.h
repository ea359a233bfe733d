#pragma once

#include "platform/instance.h"
#include "platform/linux/system/file_descriptor.h"

namespace karvel {

/// A lock on the program folder itself: it needs no file, works in a read-only folder and goes
/// with the process.
class FolderLockInstance final : public Instance {
 public:
  bool acquire(const std::string& programFolder) override;

 private:
  FileDescriptor folder_;
};

}  // namespace karvel
