#pragma once

#include <string>
#include <string_view>

namespace karvel {

/// Without the blanks (U+0020) at both ends.
inline std::string_view trimmed(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

/// With the letters A to Z in lower case.
std::string asciiLower(std::string_view text);

/// The number of characters of a UTF-8 text.
std::size_t characterCount(std::string_view utf8);

/// The first `count` characters of a UTF-8 text.
std::string_view firstCharacters(std::string_view utf8, std::size_t count);

/// The last `count` characters of a UTF-8 text, or all of it when it is shorter.
std::string_view lastCharacters(std::string_view utf8, std::size_t count);

/// A text slot of fixed width: left-aligned, padded with blanks, cut after `width` characters.
std::string fixedWidth(std::string_view utf8, std::size_t width);

/// With a blank for each line end and other control character.
std::string inOneLine(std::string_view text);

/// `digits` with zeros in front and only the rightmost `width` characters kept.
std::string zeroPadded(std::string_view digits, std::size_t width);

/// True when `text` contains `part`; an empty part is contained in every text.
inline bool contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

}  // namespace karvel
