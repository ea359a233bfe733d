#pragma once

#include <string>
#include <string_view>

namespace karvel {

/// UTF-8 as bytes of code page 932 (Shift-JIS as Windows has it; U+FF5E is 81 60). A character
/// that the code page lacks becomes "?", an ill-formed sequence of the input too. Of the
/// look-alikes that other systems' tables have instead (such as U+301C for U+FF5E) the usual nine
/// are taken.
std::string toCodePage932(std::string_view utf8);

/// Bytes of code page 932 as UTF-8. Bytes that stand for no character become U+30FB each, as the
/// platform of these files has it; a lead byte at the very end of the text is dropped.
std::string fromCodePage932(std::string_view bytes);

/// True for the first byte of a double-byte character of code page 932.
constexpr bool isLeadByte932(char byte) {
  const auto value = static_cast<unsigned char>(byte);
  return (value >= 0x81 && value <= 0x9F) || (value >= 0xE0 && value <= 0xFC);
}

}  // namespace karvel
