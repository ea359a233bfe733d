#include "platform/platform.h"

#include <windows.h>

#include <algorithm>

#include "platform/windows/desktop/win32_desktop.h"
#include "platform/windows/internet/wininet_internet.h"
#include "platform/windows/system/crash_dump.h"
#include "platform/windows/system/library_search.h"
#include "platform/windows/system/system_clock.h"
#include "platform/windows/system/user_instance.h"
#include "platform/windows/system/wide_text.h"
#include "platform/windows/system/win32_files.h"
#include "platform/windows/system/win32_profile.h"

namespace karvel {
namespace {

std::wstring executablePath() {
  std::wstring path(MAX_PATH, L'\0');
  while (true) {
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

std::string programFolder() {
  const std::wstring path = executablePath();
  return fromWide(std::wstring_view(path).substr(0, path.find_last_of(L'\\')));
}

/// The command line as it was typed, behind the program's name, which is quoted when it holds
/// blanks.
std::string arguments() {
  std::wstring_view line = GetCommandLineW();
  const bool quoted = line.starts_with(L'"');
  const auto nameEnd = quoted ? line.find(L'"', 1) : line.find_first_of(L" \t");
  if (nameEnd == std::wstring_view::npos) return {};
  line.remove_prefix(nameEnd + (quoted ? 1 : 0));
  const auto first = line.find_first_not_of(L" \t");
  if (first == std::wstring_view::npos) return {};
  return fromWide(line.substr(first, line.find_last_not_of(L" \t") - first + 1));
}

}  // namespace

Platform makePlatform(int, char**) {
  confineLibrarySearch();
  writeDumpOnCrash(programFolder() + "\\Log");
  Platform platform;
  platform.programFolder = programFolder();
  platform.commandLine = arguments();
  platform.clock = std::make_unique<SystemClock>();
  platform.files = std::make_unique<Win32Files>();
  platform.profile = std::make_unique<Win32Profile>();
  platform.internet = std::make_unique<WininetInternet>();
  platform.instance = std::make_unique<UserInstance>();
  platform.desktop = std::make_unique<Win32Desktop>();
  return platform;
}

}  // namespace karvel
