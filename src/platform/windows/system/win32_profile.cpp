#include "platform/windows/system/win32_profile.h"

#include <windows.h>

#include <optional>

#include "platform/windows/system/wide_text.h"
#include "platform/windows/system/win32_files.h"
#include "platform/windows/system/win32_handle.h"
#include "text/ini_text.h"

namespace karvel {
namespace {

constexpr UINT kCodePage = 932;

/// The path for the system's functions; empty where they are not to be used.
std::optional<std::string> systemPath(const std::string& file) {
  return GetACP() == kCodePage ? toAnsi(file) : std::nullopt;
}

std::string systemValue(const std::string& section, const std::string& key, const std::string& path,
                        std::size_t bufferSize) {
  std::string buffer(bufferSize, '\0');
  const DWORD count = GetPrivateProfileStringA(section.c_str(), key.c_str(), "", buffer.data(),
                                               static_cast<DWORD>(buffer.size()), path.c_str());
  buffer.resize(count);
  // Where the cut halves a character, a NUL may count in its place.
  return buffer.substr(0, buffer.find('\0'));
}

/// Empty when the file is missing or cannot be read to its end.
std::optional<std::string> contentOf(const std::string& file) {
  std::string content;
  const bool whole =
      Win32Files().readPieces(file, [&](std::string_view piece) { content += piece; });
  return whole ? std::optional(content) : std::nullopt;
}

bool resize(HANDLE file, std::size_t size) {
  LARGE_INTEGER end{};
  end.QuadPart = static_cast<LONGLONG>(size);
  return SetFilePointerEx(file, end, nullptr, FILE_BEGIN) != FALSE && SetEndOfFile(file) != FALSE;
}

/// In place, as the system's functions do it, if the disk has room for all of the new content.
/// Until then nobody else can write to the file.
bool writeInPlace(const std::string& section, const std::string& key, const std::string& value,
                  const std::string& file) {
  HANDLE handle = CreateFileW(toWide(file).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                              OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return false;
  const Win32Handle owner(handle);
  const auto before = contentOf(file);
  if (!before) return false;
  const std::string after = iniWithValue(*before, section, key, value);
  if (after.size() > before->size() && !resize(handle, after.size())) return false;
  SetFilePointer(handle, 0, nullptr, FILE_BEGIN);
  DWORD written = 0;
  return WriteFile(handle, after.data(), static_cast<DWORD>(after.size()), &written, nullptr) !=
             FALSE &&
         resize(handle, after.size());
}

}  // namespace

std::string Win32Profile::read(const std::string& section, const std::string& key,
                               const std::string& file, std::size_t bufferSize) {
  if (bufferSize == 0) return {};
  if (const auto path = systemPath(file)) return systemValue(section, key, *path, bufferSize);
  return iniValue(contentOf(file).value_or(""), section, key).substr(0, bufferSize - 1);
}

bool Win32Profile::write(const std::string& section, const std::string& key,
                         const std::string& value, const std::string& file) {
  // Not every file system refuses a read-only file to a super user.
  const auto attributes = Win32Files().attributes(file);
  if (attributes && (*attributes & Files::kReadOnly) != 0) return false;
  const auto path = systemPath(file);
  if (!path) return writeInPlace(section, key, value, file);
  return WritePrivateProfileStringA(section.c_str(), key.c_str(), value.c_str(), path->c_str()) !=
         FALSE;
}

}  // namespace karvel
