#include "text/code_page.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace karvel {
namespace {

using std::string_literals::operator""s;

TEST(CodePage932, MapsJapaneseTextBothWays) {
  const struct {
    std::string utf8;
    std::string bytes;
  } pairs[] = {
      {"", ""},
      {"plain ASCII \\ ~ |", "plain ASCII \\ ~ |"},
      {"\uFF5E09時",
       "\x81\x60"
       "09\x8E\x9E"},
      {"表ソ能", "\x95\x5C\x83\x5C\x94\x5C"},
      {"ｸﾞﾙｰﾌﾟ", "\xB8\xDE\xD9\xB0\xCC\xDF"},
      {"■①㈱", "\x81\xA1\x87\x40\x87\x8A"},
      {"　", "\x81\x40"},
  };
  for (const auto& pair : pairs) {
    EXPECT_EQ(toCodePage932(pair.utf8), pair.bytes) << pair.utf8;
    EXPECT_EQ(fromCodePage932(pair.bytes), pair.utf8);
  }
}

TEST(CodePage932, ReplacesWhatHasNoCounterpart) {
  EXPECT_EQ(toCodePage932("a😀b한c"), "a?b?c");
  EXPECT_EQ(toCodePage932("a\xFF"
                          "b"),
            "a?b");
  EXPECT_EQ(toCodePage932("a\xE3\x81"), "a?");
  EXPECT_EQ(fromCodePage932("a\x81\x20z"), "a\u30FB z");
  EXPECT_EQ(fromCodePage932("a\0b"s), "a\0b"s);
}

TEST(CodePage932, TakesTheUsualLookAlikes) {
  EXPECT_EQ(toCodePage932("\u301C\u2212\u2014\u2016"), toCodePage932("\uFF5E\uFF0D\u2015\u2225"));
  EXPECT_EQ(toCodePage932("\u00A2\u00A3\u00AC"), toCodePage932("\uFFE0\uFFE1\uFFE2"));
  EXPECT_EQ(toCodePage932("\u00A5\u203E"), "\\~");
  EXPECT_EQ(toCodePage932("\u00A9\u00E9"), "??") << "no letters without their accents";
}

TEST(CodePage932, IsOneTableOnEveryPlatform) {
  // FNV-1a over what each pair of bytes decodes to.
  std::uint64_t hash = 0;
  for (int first = 0; first <= 0xFF; ++first) {
    const auto lead = static_cast<char>(first);
    for (int second = 0; second <= 0xFF; ++second) {
      for (const char c : fromCodePage932(std::string{lead, static_cast<char>(second)})) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
      }
    }
    if (isLeadByte932(lead)) continue;
    EXPECT_EQ(toCodePage932(fromCodePage932(std::string(1, lead))), std::string(1, lead)) << first;
  }
  EXPECT_EQ(hash, 0x189fc98a59515c34U);
}

TEST(CodePage932, DropsHalfACharacterAtTheEnd) {
  EXPECT_EQ(fromCodePage932("\x8E\x9E\x8E"), "時");
  EXPECT_EQ(fromCodePage932("\x8E"), "");
}

TEST(CodePage932, TakesLongTextsWhole) {
  std::string utf8;
  std::string bytes;
  for (int i = 0; i < 5000; ++i) {
    utf8 += "時";
    bytes += "\x8E\x9E";
  }
  EXPECT_EQ(toCodePage932(utf8), bytes);
  EXPECT_EQ(fromCodePage932(bytes), utf8);
}

}  // namespace
}  // namespace karvel
