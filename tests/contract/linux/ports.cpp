#include "contract/ports.h"

#include "platform/linux/system/folder_lock_instance.h"
#include "platform/linux/system/ini_profile.h"
#include "platform/linux/system/posix_files.h"

namespace karvel {

std::unique_ptr<Files> makeFiles() {
  return std::make_unique<PosixFiles>();
}

std::unique_ptr<Profile> makeProfile() {
  return std::make_unique<IniProfile>();
}

std::unique_ptr<Instance> makeInstance() {
  return std::make_unique<FolderLockInstance>();
}

}  // namespace karvel
