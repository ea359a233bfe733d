#include "platform/windows/system/user_instance.h"

#include <shlobj.h>

#include <cstdio>
#include <string>

#include "platform/windows/system/wide_text.h"

namespace karvel {
namespace {

constexpr int kAttempts = 20;
constexpr DWORD kPause = 50;  // milliseconds

/// The same for every path to the folder, be it a short one, a mapped drive or a share.
std::wstring lockName(const std::wstring& programFolder) {
  const Win32Handle folder(
      CreateFileW(programFolder.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                  nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  BY_HANDLE_FILE_INFORMATION info{};
  GetFileInformationByHandle(folder.get(), &info);
  return L"karvel-" + std::to_wstring(info.dwVolumeSerialNumber) + L"-" +
         std::to_wstring(info.nFileIndexHigh) + L"-" + std::to_wstring(info.nFileIndexLow) +
         L".lock";
}

/// Empty when the user has no folder for local data.
std::wstring localDataFolder() {
  std::wstring path(MAX_PATH, L'\0');
  if (FAILED(SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, 0, path.data()))) return {};
  return path.substr(0, path.find(L'\0'));
}

std::wstring lockPath(const std::string& programFolder) {
  return localDataFolder() + L'\\' + lockName(toWide(programFolder));
}

}  // namespace

bool UserInstance::acquire(const std::string& programFolder) {
  const std::wstring path = lockPath(programFolder);
  for (int i = 0; i < kAttempts; ++i) {
    HANDLE lock = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                              FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (lock != INVALID_HANDLE_VALUE) {
      lock_.reset(lock);
      return true;
    }
    if (GetLastError() == ERROR_SHARING_VIOLATION) return false;
    // Access is denied for a moment while the file of the program before is being deleted.
    Sleep(kPause);
  }
  std::fputs("karvel: 二重起動を防ぐロックを作れないため、ロックなしで起動します。\n", stderr);
  return true;
}

bool UserInstance::held(const std::string& programFolder) {
  HANDLE lock = CreateFileW(lockPath(programFolder).c_str(), GENERIC_READ,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, 0, nullptr);
  if (lock == INVALID_HANDLE_VALUE) return GetLastError() == ERROR_SHARING_VIOLATION;
  CloseHandle(lock);
  return false;
}

}  // namespace karvel
