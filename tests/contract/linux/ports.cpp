#include "contract/ports.h"

#include "platform/linux/system/ini_profile.h"
#include "platform/linux/system/posix_files.h"
#include "platform/linux/system/user_instance.h"

namespace karvel {

std::unique_ptr<Files> makeFiles() {
  return std::make_unique<PosixFiles>();
}

std::unique_ptr<Profile> makeProfile() {
  return std::make_unique<IniProfile>();
}

std::unique_ptr<Instance> makeInstance() {
  return std::make_unique<UserInstance>();
}

}  // namespace karvel
