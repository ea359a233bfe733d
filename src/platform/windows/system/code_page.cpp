#include "text/code_page.h"

#include <windows.h>

#include <array>
#include <memory>

#include "platform/windows/system/wide_text.h"

namespace karvel {
namespace {

constexpr UINT kCodePage = 932;
constexpr char kReplacement = '?';
constexpr wchar_t kUnknownCharacter = L'\u30FB';

/// Characters that other systems' tables map where code page 932 has a look-alike.
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

/// A character beyond the first plane is two units, but gets one replacement: its first half goes.
void joinSurrogates(std::wstring& text) {
  std::size_t length = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool pair =
        isHighSurrogate(text[i]) && i + 1 < text.size() && isLowSurrogate(text[i + 1]);
    if (!pair) text[length++] = text[i];
  }
  text.resize(length);
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

/// The one character, or U+30FB where the bytes form none.
wchar_t decodeOne(std::string_view bytes, DWORD flags) {
  const std::wstring text = decode(bytes, flags);
  return text.size() == 1 ? text.front() : kUnknownCharacter;
}

/// What each byte that leads no pair stands for, be it a private character, and each pair of bytes;
/// 0 where a pair forms no character. Made once: asking the system for each character is slow.
struct DecodingTable {
  std::array<wchar_t, 0x100> single{};
  std::array<std::array<wchar_t, 0x100>, 0x100> pairs{};

  DecodingTable() {
    for (int first = 0; first <= 0xFF; ++first) {
      const auto lead = static_cast<char>(first);
      if (!isLeadByte932(lead)) {
        single[first] = decodeOne({&lead, 1}, 0);
        continue;
      }
      for (int second = 0; second <= 0xFF; ++second) {
        const std::array pair{lead, static_cast<char>(second)};
        const std::wstring text = decodeWellFormed({pair.data(), pair.size()});
        if (text.size() == 1) pairs[first][second] = text.front();
      }
    }
  }
};

std::wstring decodeIllFormed(std::string_view bytes) {
  static const auto table = std::make_unique<const DecodingTable>();
  std::wstring text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    if (!isLeadByte932(bytes[i])) {
      text.push_back(table->single[byte]);
      continue;
    }
    if (i + 1 == bytes.size()) break;
    const wchar_t pair = table->pairs[byte][static_cast<unsigned char>(bytes[i + 1])];
    text.push_back(pair != 0 ? pair : kUnknownCharacter);
    // What follows a lead byte without forming a character with it may be a character itself.
    if (pair != 0) ++i;
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
  return fromWide(text.empty() ? decodeIllFormed(bytes) : text);
}

}  // namespace karvel
