#include "text/server_text.h"

#include <algorithm>

#include "text/code_page.h"

namespace karvel {
namespace {

unsigned byteAt(std::string_view text, std::size_t index) {
  return static_cast<unsigned char>(text[index]);
}

bool isContinuation(std::string_view text, std::size_t index) {
  return index < text.size() && (byteAt(text, index) & 0xC0U) == 0x80;
}

/// The number of bytes of the UTF-8 character at `index`; 0 when there is none.
std::size_t utf8Length(std::string_view text, std::size_t index) {
  const unsigned lead = byteAt(text, index);
  if (lead < 0x80) return 1;
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if (!isContinuation(text, index + i)) return 0;
  }
  const unsigned second = byteAt(text, index + 1);
  const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
  const bool beyond = (lead == 0xED && second > 0x9F) || (lead == 0xF4 && second > 0x8F);
  return overlong || beyond ? 0 : length;
}

bool isUtf8(std::string_view text) {
  std::size_t index = 0;
  while (index < text.size()) {
    const std::size_t length = utf8Length(text, index);
    if (length == 0) return false;
    index += length;
  }
  return true;
}

bool isAsciiOrHalfWidthKatakana(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x80 || (byte >= 0xA1 && byte <= 0xDF);
}

}  // namespace

std::string codePage932OfServerText(std::string_view bytes) {
  if (std::all_of(bytes.begin(), bytes.end(), isAsciiOrHalfWidthKatakana)) {
    return std::string(bytes);
  }
  return isUtf8(bytes) ? toCodePage932(bytes) : std::string(bytes);
}

std::size_t characterLength932(std::string_view bytes) {
  if (bytes.size() < 2 || !isLeadByte932(bytes.front())) return 1;
  const unsigned second = byteAt(bytes, 1);
  return second >= 0x40 && second != 0x7F && second <= 0xFC ? 2 : 1;
}

std::string_view cutBytes932(std::string_view bytes, std::size_t limit) {
  std::size_t end = 0;
  while (end < bytes.size()) {
    const std::size_t length = characterLength932(bytes.substr(end));
    if (end + length > limit) break;
    end += length;
  }
  return bytes.substr(0, end);
}

}  // namespace karvel
