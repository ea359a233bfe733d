#include "platform/windows/system/wide_text.h"

#include <windows.h>

namespace karvel {

std::wstring toWide(std::string_view utf8) {
  const int size = static_cast<int>(utf8.size());
  const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), length);
  return wide;
}

std::string fromWide(std::wstring_view wide) {
  const int length = static_cast<int>(wide.size());
  const int size =
      WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, utf8.data(), size, nullptr, nullptr);
  return utf8;
}

std::optional<std::string> toAnsi(std::string_view utf8) {
  const std::wstring wide = toWide(utf8);
  const bool takesUtf8 = GetACP() == CP_UTF8;  // for which the flags below are an error
  if (takesUtf8) return fromWide(wide);
  BOOL lossy = FALSE;
  const int length = static_cast<int>(wide.size());
  std::string bytes(wide.size() * 2, '\0');
  const int size =
      WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.data(), length, bytes.data(),
                          static_cast<int>(bytes.size()), nullptr, &lossy);
  bytes.resize(static_cast<std::size_t>(size));
  return lossy == FALSE ? std::optional(bytes) : std::nullopt;
}

}  // namespace karvel
