#include "text/server_text.h"

#include <algorithm>

#include "text/code_page.h"
#include "text/strings.h"

namespace karvel {
namespace {

unsigned byteAt(std::string_view text, std::size_t index) {
  return static_cast<unsigned char>(text[index]);
}

bool isAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// The number of bytes of the UTF-8 character that the text begins with; 0 when there is none.
std::size_t utf8Length(std::string_view text) {
  const unsigned lead = byteAt(text, 0);
  if (lead < 0x80) return 1;
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byteAt(text, i) & 0xC0U) != 0x80) return 0;
  }
  const unsigned second = byteAt(text, 1);
  const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
  const bool beyond = (lead == 0xED && second > 0x9F) || (lead == 0xF4 && second > 0x8F);
  return overlong || beyond ? 0 : length;
}

/// Made of ASCII, half-width katakana and the double-byte characters of JIS X 0208.
bool isCommonCodePage932(std::string_view text) {
  while (!text.empty()) {
    const unsigned first = byteAt(text, 0);
    const bool lead = (first >= 0x81 && first <= 0x9F) || (first >= 0xE0 && first <= 0xEA);
    const bool single = first < 0x80 || (first >= 0xA1 && first <= 0xDF);
    if (!lead && !single) return false;
    text.remove_prefix(1);
    if (single) continue;
    const unsigned second = text.empty() ? 0 : byteAt(text, 0);
    if (second < 0x40 || second == 0x7F || second > 0xFC) return false;
    text.remove_prefix(1);
  }
  return true;
}

char32_t codePointOf(std::string_view threeBytes) {
  return ((byteAt(threeBytes, 0) & 0x0FU) << 12U) | ((byteAt(threeBytes, 1) & 0x3FU) << 6U) |
         (byteAt(threeBytes, 2) & 0x3FU);
}

std::string threeBytesOf(char32_t codePoint) {
  return {static_cast<char>(0xE0U | (codePoint >> 12U)),
          static_cast<char>(0x80U | ((codePoint >> 6U) & 0x3FU)),
          static_cast<char>(0x80U | (codePoint & 0x3FU))};
}

/// The kana that `kana` and the mark behind it make; 0 when they make none.
char32_t voiced(char32_t kana, bool halfVoiced) {
  constexpr char32_t kKatakana = 0x60;  // above the hiragana
  constexpr std::u32string_view kVoiced = U"かきくけこさしすせそたちつてとはひふへほゝ";
  constexpr std::u32string_view kHalfVoiced = U"はひふへほ";
  const bool katakana = kana >= U'ァ';
  const char32_t hiragana = katakana ? kana - kKatakana : kana;
  if (halfVoiced) return kHalfVoiced.find(hiragana) != kHalfVoiced.npos ? kana + 2 : 0;
  if (kVoiced.find(hiragana) != kVoiced.npos) return kana + 1;
  if (hiragana == U'う') return kana + (U'ゔ' - U'う');
  if (kana >= U'ワ' && kana <= U'ヲ') return kana + (U'ヷ' - U'ワ');
  return 0;
}

/// With each kana and the combining mark behind it as one character.
std::string composed(std::string_view utf8) {
  constexpr std::string_view kMark = "\u3099";
  constexpr std::string_view kHalfMark = "\u309A";
  std::string text;
  while (!utf8.empty()) {
    const std::string_view character = utf8.substr(0, utf8Length(utf8));
    utf8.remove_prefix(character.size());
    const bool mark = character == kMark || character == kHalfMark;
    const std::size_t before = text.size() < 3 ? 0 : text.size() - 3;
    const bool afterKana = mark && text.compare(before, 1, "\xE3") == 0;
    const char32_t kana = afterKana ? voiced(codePointOf(std::string_view(text).substr(before)),
                                             character == kHalfMark)
                                    : 0;
    if (kana == 0) {
      text += character;
    } else {
      text.replace(before, std::string::npos, threeBytesOf(kana));
    }
  }
  return text;
}

}  // namespace

bool isServerUtf8(std::string_view bytes) {
  constexpr std::string_view kNotOfEastAsia = "\xE0\xE1\xEE";
  if (isAscii(bytes)) return false;
  bool longCharacter = false;
  bool eastAsian = true;
  for (std::string_view rest = bytes; !rest.empty();) {
    const std::size_t length = utf8Length(rest);
    if (length == 0) return false;
    longCharacter = longCharacter || length >= 3;
    eastAsian = eastAsian && !contains(kNotOfEastAsia, rest.substr(0, 1));
    rest.remove_prefix(length);
  }
  return (longCharacter && eastAsian) || !isCommonCodePage932(bytes);
}

std::string textOfServer(std::string_view bytes) {
  if (isAscii(bytes)) return std::string(bytes);
  return isServerUtf8(bytes) ? composed(bytes) : fromCodePage932(bytes);
}

}  // namespace karvel
