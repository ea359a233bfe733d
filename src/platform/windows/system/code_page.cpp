#include "text/code_page.h"

#include <windows.h>

#include "platform/windows/system/wide_text.h"

namespace karvel {
namespace {

constexpr UINT kCodePage = 932;
constexpr char kReplacement = '?';
constexpr wchar_t kUnknownCharacter = L'\u30FB';

/// Characters that other systems' tables have where code page 932 has a look-alike.
constexpr struct {
  wchar_t other;
  wchar_t own;
} kLookAlikes[] = {
    {L'\u00A2', L'\uFFE0'}, {L'\u00A3', L'\uFFE1'}, {L'\u00A5', L'\\'},
    {L'\u00AC', L'\uFFE2'}, {L'\u2014', L'\u2015'}, {L'\u2016', L'\u2225'},
    {L'\u203E', L'~'},      {L'\u2212', L'\uFF0D'}, {L'\u301C', L'\uFF5E'},
};

void replaceLookAlikes(std::wstring& text) {
  for (wchar_t& character : text) {
    for (const auto& pair : kLookAlikes) {
      if (character == pair.other) character = pair.own;
    }
  }
}

constexpr bool isHighSurrogate(wchar_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool isLowSurrogate(wchar_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// A character beyond the first plane is two units, but one replacement.
void joinSurrogates(std::wstring& text) {
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    if (isHighSurrogate(text[i]) && isLowSurrogate(text[i + 1])) text.erase(i, 1);
  }
}

std::wstring decode(std::string_view bytes, DWORD flags) {
  const int size = static_cast<int>(bytes.size());
  const int length = MultiByteToWideChar(kCodePage, flags, bytes.data(), size, nullptr, 0);
  std::wstring text(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(kCodePage, flags, bytes.data(), size, text.data(), length);
  return text;
}

/// Empty unless the bytes are well-formed throughout.
std::wstring decodeWellFormed(std::string_view bytes) {
  return decode(bytes, MB_ERR_INVALID_CHARS);
}

/// Every byte that leads no pair stands for something, be it a private character.
std::wstring decodeSingle(char byte) {
  return decode({&byte, 1}, 0);
}

std::wstring decodeOneByOne(std::string_view bytes) {
  std::wstring text;
  while (!bytes.empty()) {
    const bool lead = isLeadByte932(bytes.front());
    if (lead && bytes.size() == 1) break;
    const std::wstring character =
        lead ? decodeWellFormed(bytes.substr(0, 2)) : decodeSingle(bytes.front());
    // What follows a lead byte without forming a character with it may be a character itself.
    const bool pair = lead && !character.empty();
    text.append(character.empty() ? std::wstring(1, kUnknownCharacter) : character);
    bytes.remove_prefix(pair ? 2 : 1);
  }
  return text;
}

}  // namespace

std::string toCodePage932(std::string_view utf8) {
  std::wstring text = toWide(utf8);
  if (text.empty()) return {};
  replaceLookAlikes(text);
  joinSurrogates(text);
  const int length = static_cast<int>(text.size());
  std::string bytes(text.size() * 2, '\0');
  const int size =
      WideCharToMultiByte(kCodePage, WC_NO_BEST_FIT_CHARS, text.data(), length, bytes.data(),
                          static_cast<int>(bytes.size()), &kReplacement, nullptr);
  bytes.resize(static_cast<std::size_t>(size));
  return bytes;
}

std::string fromCodePage932(std::string_view bytes) {
  if (bytes.empty()) return {};
  const std::wstring text = decodeWellFormed(bytes);
  return fromWide(text.empty() ? decodeOneByOne(bytes) : text);
}

}  // namespace karvel
