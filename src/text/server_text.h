#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace karvel {

/// A text of a server that does not say in which encoding it writes, as bytes of code page 932.
/// What reads as UTF-8 is converted; any other bytes stay as they are. A text of half-width
/// katakana can read as UTF-8 by chance: it stays, too.
std::string codePage932OfServerText(std::string_view bytes);

/// The beginning of a text of code page 932, at most `limit` bytes, without half a character.
std::string_view cutBytes932(std::string_view bytes, std::size_t limit);

/// The number of bytes (1 or 2) of the first character of a text of code page 932, which must not
/// be empty. A lead byte without a possible second byte counts as a character of its own.
std::size_t characterLength932(std::string_view bytes);

}  // namespace karvel
