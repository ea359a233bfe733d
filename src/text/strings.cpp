#include "text/strings.h"

#include <algorithm>

namespace karvel {
namespace {

bool continuesCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

}  // namespace

std::string asciiLower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

std::size_t characterCount(std::string_view utf8) {
  return utf8.size() -
         static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), continuesCharacter));
}

std::string_view firstCharacters(std::string_view utf8, std::size_t count) {
  std::size_t end = 0;
  while (end < utf8.size()) {
    if (!continuesCharacter(utf8[end]) && count-- == 0) break;
    ++end;
  }
  return utf8.substr(0, end);
}

std::string_view lastCharacters(std::string_view utf8, std::size_t count) {
  std::size_t begin = utf8.size();
  while (begin > 0 && count > 0) {
    --begin;
    if (!continuesCharacter(utf8[begin])) --count;
  }
  return utf8.substr(begin);
}

std::string fixedWidth(std::string_view utf8, std::size_t width) {
  std::string slot(firstCharacters(utf8, width));
  slot.append(width - characterCount(slot), ' ');
  return slot;
}

std::string inOneLine(std::string_view text) {
  std::string line(text);
  std::replace_if(
      line.begin(), line.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, ' ');
  return line;
}

std::string zeroPadded(std::string_view digits, std::size_t width) {
  std::string padded(width, '0');
  padded.append(digits);
  return std::string(lastCharacters(padded, width));
}

}  // namespace karvel
