#pragma once

#include <vector>

#include "platform/instance.h"
#include "platform/linux/system/file_descriptor.h"

namespace karvel {

/// Locks an empty folder that only the user can open, in the user's runtime folder and in the
/// folder for temporary files: a program started at boot may not have the first, one with a private
/// second shares the first. The folder goes with an orderly end; after a crash it stays, unlocked.
class UserInstance final : public Instance {
 public:
  UserInstance() = default;
  ~UserInstance() override;
  UserInstance(const UserInstance&) = delete;
  UserInstance& operator=(const UserInstance&) = delete;

  bool acquire(const std::string& programFolder) override;

  /// True while a process of this user holds the folder. Keeps no lock and leaves nothing behind.
  [[nodiscard]] static bool held(const std::string& programFolder);

 private:
  struct Lock {
    std::string path;
    FileDescriptor folder;
  };

  std::vector<Lock> locks_;
};

}  // namespace karvel
