#include "text/code_page.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace karvel {
namespace {

using std::string_literals::operator""s;

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
  // FNV-1a over what each pair of bytes decodes to, and what becomes of that in its turn.
  std::uint64_t hash = 0;
  const auto add = [&hash](const std::string& bytes) {
    for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
  };
  for (int first = 0; first <= 0xFF; ++first) {
    const auto lead = static_cast<char>(first);
    for (int second = 0; second <= 0xFF; ++second) {
      const std::string text = fromCodePage932(std::string{lead, static_cast<char>(second)});
      add(text);
      add(toCodePage932(text));
    }
  }
  EXPECT_EQ(hash, 0xef04537ec86797bfU);
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
