#include "platform/platform.h"

#include <filesystem>

#include "platform/linux/desktop/qt_desktop.h"
#include "platform/linux/desktop/qt_display.h"
#include "platform/linux/internet/ftp_internet.h"
#include "platform/linux/system/ini_profile.h"
#include "platform/linux/system/posix_files.h"
#include "platform/linux/system/system_clock.h"
#include "platform/linux/system/user_instance.h"

namespace karvel {
namespace {

std::string programFolder() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).parent_path().string();
}

std::string joinedArguments(int argc, char** argv) {
  std::string joined;
  for (int i = 1; i < argc; ++i) joined.append(i > 1 ? " " : "").append(argv[i]);
  return joined;
}

}  // namespace

Platform makePlatform(int argc, char** argv) {
  Platform platform;
  platform.programFolder = programFolder();
  platform.commandLine = joinedArguments(argc, argv);
  platform.clock = std::make_unique<SystemClock>();
  platform.files = std::make_unique<PosixFiles>();
  platform.profile = std::make_unique<IniProfile>();
  platform.internet = std::make_unique<FtpInternet>();
  platform.instance = std::make_unique<UserInstance>();
  platform.desktop = std::make_unique<QtDesktop>(findDisplay());
  return platform;
}

}  // namespace karvel
