#include "platform/windows/system/wide_text.h"

#include <windows.h>

namespace karvel {
namespace {

std::wstring decoded(UINT codePage, std::string_view bytes) {
  const int size = static_cast<int>(bytes.size());
  const int length = MultiByteToWideChar(codePage, 0, bytes.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(codePage, 0, bytes.data(), size, wide.data(), length);
  return wide;
}

}  // namespace

std::wstring toWide(std::string_view utf8) {
  return decoded(CP_UTF8, utf8);
}

std::string fromWide(std::wstring_view wide) {
  const int length = static_cast<int>(wide.size());
  const int size =
      WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, utf8.data(), size, nullptr, nullptr);
  return utf8;
}

std::string fromAnsi(std::string_view bytes) {
  return fromWide(decoded(CP_ACP, bytes));
}

}  // namespace karvel
