#include "platform/windows/system/ansi_path.h"

#include <windows.h>

#include <optional>

#include "platform/windows/system/wide_text.h"

namespace karvel {
namespace {

/// "?" stands in no file name, so a call with this path fails and touches nothing else.
constexpr const char* kNoPath = "?";

std::optional<std::string> asAnsi(const std::wstring& path) {
  const int length = static_cast<int>(path.size());
  BOOL lossy = FALSE;
  const int size = WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, path.data(), length, nullptr,
                                       0, nullptr, &lossy);
  if (lossy != FALSE) return std::nullopt;
  std::string bytes(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, path.data(), length, bytes.data(), size,
                      nullptr, nullptr);
  return bytes;
}

/// The path by short names; empty when nothing of that path is there.
std::wstring shortPath(const std::wstring& path) {
  const DWORD size = GetShortPathNameW(path.c_str(), nullptr, 0);
  std::wstring result(size, L'\0');
  result.resize(GetShortPathNameW(path.c_str(), result.data(), size));
  return result;
}

/// Short names as far as the path exists already: a file that is about to be created has its
/// folder only.
std::wstring shortPathOfFile(const std::wstring& path) {
  std::wstring whole = shortPath(path);
  if (!whole.empty()) return whole;
  const auto separator = path.find_last_of(L'\\');
  if (separator == std::wstring::npos) return path;
  return shortPath(path.substr(0, separator)) + path.substr(separator);
}

}  // namespace

std::string ansiPath(const std::string& utf8Path) {
  const std::wstring path = toWide(utf8Path);
  if (const auto bytes = asAnsi(path)) return *bytes;
  return asAnsi(shortPathOfFile(path)).value_or(kNoPath);
}

}  // namespace karvel
