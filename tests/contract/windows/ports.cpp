#include "contract/ports.h"

#include <windows.h>

#include "platform/windows/internet/wininet_internet.h"
#include "platform/windows/system/user_instance.h"
#include "platform/windows/system/win32_files.h"
#include "platform/windows/system/win32_profile.h"

namespace karvel {

std::unique_ptr<Files> makeFiles() {
  return std::make_unique<Win32Files>();
}

std::unique_ptr<Profile> makeProfile() {
  return std::make_unique<Win32Profile>();
}

std::unique_ptr<Instance> makeInstance() {
  return std::make_unique<UserInstance>();
}

std::unique_ptr<Internet> makeInternet(const std::uint32_t& longestLimit) {
  return std::make_unique<ImpatientInternet<WininetInternet>>(longestLimit);
}

bool differsHere(Difference) {
  static const bool wine =
      GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
  return wine;
}

}  // namespace karvel
