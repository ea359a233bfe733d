#include "platform/windows/system/win32_profile.h"

#include <windows.h>

#include "platform/windows/system/ansi_path.h"

namespace karvel {
namespace {

bool isReadOnly(const std::string& path) {
  const DWORD bits = GetFileAttributesA(path.c_str());
  return bits != INVALID_FILE_ATTRIBUTES && (bits & FILE_ATTRIBUTE_READONLY) != 0;
}

}  // namespace

std::string Win32Profile::read(const std::string& section, const std::string& key,
                               const std::string& file, std::size_t bufferSize) {
  if (bufferSize == 0) return {};
  std::string buffer(bufferSize, '\0');
  const DWORD count =
      GetPrivateProfileStringA(section.c_str(), key.c_str(), "", buffer.data(),
                               static_cast<DWORD>(buffer.size()), ansiPath(file).c_str());
  buffer.resize(count);
  // Where the cut halves a character, a NUL may count in its place.
  return buffer.substr(0, buffer.find('\0'));
}

bool Win32Profile::write(const std::string& section, const std::string& key,
                         const std::string& value, const std::string& file) {
  const std::string path = ansiPath(file);
  // Not every file system refuses a read-only file to a super user.
  if (isReadOnly(path)) return false;
  return WritePrivateProfileStringA(section.c_str(), key.c_str(), value.c_str(), path.c_str()) !=
         FALSE;
}

}  // namespace karvel
