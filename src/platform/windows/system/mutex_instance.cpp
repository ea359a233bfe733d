#include "platform/windows/system/mutex_instance.h"

#include <cstdint>

#include "platform/windows/system/wide_text.h"

namespace karvel {
namespace {

/// One spelling for all that name the same folder: long names, upper case, no separator at the end.
std::wstring canonicalFolder(const std::string& folder) {
  std::wstring path = toWide(folder);
  const DWORD size = GetLongPathNameW(path.c_str(), nullptr, 0);
  if (size > 0) {
    std::wstring longPath(size, L'\0');
    longPath.resize(GetLongPathNameW(path.c_str(), longPath.data(), size));
    if (!longPath.empty()) path = longPath;
  }
  CharUpperBuffW(path.data(), static_cast<DWORD>(path.size()));
  while (!path.empty() && path.back() == L'\\') path.pop_back();
  return path;
}

/// The name of a kernel object must be short and free of backslashes, so the path goes into it as
/// a number (FNV-1a, 64 bits).
std::uint64_t hashOf(std::wstring_view text) {
  std::uint64_t hash = 0xcbf29ce484222325U;
  for (const wchar_t unit : text) hash = (hash ^ unit) * 0x100000001b3U;
  return hash;
}

}  // namespace

bool MutexInstance::acquire(const std::string& programFolder) {
  const std::wstring name =
      L"Global\\karvel-" + std::to_wstring(hashOf(canonicalFolder(programFolder)));
  SetLastError(ERROR_SUCCESS);
  mutex_.reset(CreateMutexW(nullptr, FALSE, name.c_str()));
  const DWORD error = GetLastError();
  // One that runs with higher rights shows itself only by the refusal.
  const bool held = error == ERROR_ALREADY_EXISTS || error == ERROR_ACCESS_DENIED;
  if (held) mutex_.reset();
  return !held;
}

}  // namespace karvel
