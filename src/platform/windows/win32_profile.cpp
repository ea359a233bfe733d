#include "platform/windows/win32_profile.h"

#include <windows.h>

#include "platform/windows/ansi_path.h"

namespace karvel {

std::string Win32Profile::read(const std::string& section, const std::string& key,
                               const std::string& file, std::size_t bufferSize) {
  if (bufferSize == 0) return {};
  std::string buffer(bufferSize, '\0');
  const DWORD count =
      GetPrivateProfileStringA(section.c_str(), key.c_str(), "", buffer.data(),
                               static_cast<DWORD>(buffer.size()), ansiPath(file).c_str());
  buffer.resize(count);
  return buffer;
}

bool Win32Profile::write(const std::string& section, const std::string& key,
                         const std::string& value, const std::string& file) {
  return WritePrivateProfileStringA(section.c_str(), key.c_str(), value.c_str(),
                                    ansiPath(file).c_str()) != FALSE;
}

}  // namespace karvel
