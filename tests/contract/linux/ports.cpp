#include "contract/ports.h"

#include "platform/linux/internet/ftp_internet.h"
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

std::unique_ptr<Internet> makeInternet(const std::uint32_t& longestLimit) {
  return std::make_unique<ImpatientInternet<FtpInternet>>(longestLimit);
}

bool isKnown(Difference) {
  return false;
}

}  // namespace karvel
