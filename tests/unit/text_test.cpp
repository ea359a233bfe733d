#include <gtest/gtest.h>

#include "text/server_text.h"
#include "text/strings.h"

namespace karvel {
namespace {

TEST(FixedWidth, CountsCharacters) {
  EXPECT_EQ(fixedWidth("表a", 4), "表a  ");
  EXPECT_EQ(fixedWidth("表aソb", 3), "表aソ");
  EXPECT_EQ(fixedWidth("", 1), " ");
}

/// Whether the bytes are exactly one character in UTF-8: what is decoded and encoded again.
bool isOneCharacter(const std::string& bytes) {
  const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const std::size_t length = at(0) >= 0xF0 ? 4 : at(0) >= 0xE0 ? 3 : at(0) >= 0xC0 ? 2 : 1;
  if (length != bytes.size() || at(0) >= 0xF8) return false;
  unsigned point = length == 1 ? at(0) : at(0) & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if (at(i) < 0x80 || at(i) > 0xBF) return false;
    point = point << 6U | (at(i) & 0x3FU);
  }
  const unsigned smallest[] = {0, 0x80, 0x800, 0x10000};
  const bool surrogate = point >= 0xD800 && point <= 0xDFFF;
  return point >= smallest[length - 1] && point <= 0x10FFFF && !surrogate &&
         (length > 1 || point < 0x80);
}

TEST(ServerText, IsUtf8WhereAllOfItIs) {
  const std::string rests[] = {"", "\x80", "\xBF\x80", "\x80\xC0", "\x80\x80\x80"};
  for (int lead = 0x80; lead <= 0xFF; ++lead) {
    for (int second = 0x7F; second <= 0xFF; ++second) {
      for (const std::string& rest : rests) {
        const std::string text = std::string{static_cast<char>(lead), static_cast<char>(second)} +
                                 rest + "😀";  // no code page 932
        EXPECT_EQ(isServerUtf8(text), isOneCharacter(text.substr(0, text.size() - 4)))
            << testing::PrintToString(text);
      }
    }
  }
}

}  // namespace
}  // namespace karvel
