#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <random>
#include <regex>

#include "text/ini_text.h"
#include "text/line_splitter.h"
#include "text/numeric_value.h"
#include "text/server_text.h"
#include "text/strings.h"
#include "text/wildcard.h"

namespace karvel {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

/// The rule as a pattern over the text without its blanks.
double valueByPattern(std::string text) {
  static const std::regex kPrefixed("&[Hh]([0-9A-Fa-f]+)|&[Oo]([0-7]+)", std::regex::optimize);
  static const std::regex kDecimal(R"(([+-]?(\d+\.?\d*|\.\d+))([eEdD]([+-]?\d+))?)",
                                   std::regex::optimize);
  std::erase_if(text, [](char c) { return c == ' ' || c == '\t' || c == '\n'; });
  constexpr auto kFromTheStart = std::regex_constants::match_continuous;
  std::smatch part;
  if (std::regex_search(text, part, kPrefixed, kFromTheStart)) {
    return part[1].matched ? static_cast<double>(std::stoull(part[1], nullptr, 16))
                           : static_cast<double>(std::stoull(part[2], nullptr, 8));
  }
  if (!std::regex_search(text, part, kDecimal, kFromTheStart)) return 0;
  const std::string number = part[1].str() + (part[4].matched ? "e" + part[4].str() : "");
  return std::clamp(std::strtod(number.c_str(), nullptr), -kLargest, kLargest);
}

TEST(NumericValue, IsTheLongestLeadingNumber) {
  const std::string characters = "0123456789789&&HhOo+-..eEdDaAfFgG/:@` \t\n\r";
  std::mt19937 random(1);
  for (int round = 0; round < 20'000; ++round) {
    std::string text;
    if (random() % 3 == 0) text = random() % 2 == 0 ? "&h" : "&O";
    for (auto length = random() % 7; length > 0; --length) {
      text += characters[random() % characters.size()];
    }
    ASSERT_EQ(numericValue(text), valueByPattern(text)) << testing::PrintToString(text);
  }
  for (const char* none : {"", "００１", "inf", "&X1", "\u30001"}) EXPECT_EQ(numericValue(none), 0);
}

TEST(NumericValue, StaysFinite) {
  EXPECT_EQ(numericValue("1e999"), kLargest);
  EXPECT_EQ(numericValue("-1e99999999999999999999"), -kLargest);
  EXPECT_EQ(numericValue("1e-999"), 0);
  EXPECT_EQ(numericValue("0." + std::string(10000, '0') + "1"), 0);
  EXPECT_EQ(numericValue("&H" + std::string(10000, 'F')), kLargest);
}

TEST(WholeNumericValue, RoundsAndStaysWithinItsType) {
  EXPECT_EQ(wholeNumericValue("21.5"), 22);
  EXPECT_EQ(wholeNumericValue("21.4"), 21);
  EXPECT_EQ(wholeNumericValue("1e99"), std::numeric_limits<int>::max());
  EXPECT_EQ(wholeNumericValue("-1e99"), std::numeric_limits<int>::min());
}

TEST(DecimalText, WritesAWholeNumberInFull) {
  EXPECT_EQ(decimalText(-0.4), "0");
  EXPECT_EQ(decimalText(-12.5), "-13");
  EXPECT_EQ(decimalText(-kLargest).size(), 310U);
}

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

TEST(Wildcard, MatchesWholeNames) {
  const std::pair<const char*, const char*> matching[] = {
      {"A.TXT", "*.txt"}, {"a.txt", "*.TxT"}, {".txt", "*.txt"},      {"a.txt.txt", "*.txt"},
      {"", ""},           {"", "*"},          {"表ソ.txt", "??.txt"}, {"a-b-c", "a*b*c"},
      {"a\\b", "a\\b"},   {"aab", "*ab"}};
  for (const auto& [name, pattern] : matching) {
    EXPECT_TRUE(matchesWildcard(name, pattern)) << name << " ~ " << pattern;
  }
  const std::pair<const char*, const char*> others[] = {
      {"a.txtx", "*.txt"}, {"atxt", "*.txt"},     {"a", ""},          {"", "?"},
      {"a", "a?"},         {"表ソ.txt", "?.txt"}, {"a-b-d", "a*b*c"}, {"a.txt", "[a].txt"}};
  for (const auto& [name, pattern] : others) {
    EXPECT_FALSE(matchesWildcard(name, pattern)) << name << " ~ " << pattern;
  }
  EXPECT_FALSE(matchesWildcard(std::string(2000, 'a'), "*a*a*a*a*a*a*a*a*b")) << "without delay";
}

TEST(LineSplitter, PassesOverALineThatIsTooLong) {
  std::vector<std::size_t> lengths;
  LineSplitter splitter;
  const auto take = [&](std::string_view line) { lengths.push_back(line.size()); };
  const std::string piece(LineSplitter::kLongestLine / 2, 'x');
  for (const int pieces : {2, 3}) {
    for (int i = 0; i < pieces; ++i) splitter.feed(piece, take);
    splitter.feed("\nshort\n", take);
  }
  EXPECT_EQ(lengths, (std::vector<std::size_t>{LineSplitter::kLongestLine, 5, 5}));
}

// What the contract of profile files leaves open: its own cases are run on every platform's files.

TEST(IniText, ReadsLinesHoweverTheyEnd) {
  const std::pair<std::string, std::string> cases[] = {
      {"[Section]\rKey=v", "v"},
      {"\xEF\xBB\xBF[Section]\n\rKey=v\r\r\n", "v"},
      {std::string(2, '\0') + "[Section]\r\nKey=v\r\n", ""},
  };
  for (const auto& [text, value] : cases) {
    EXPECT_EQ(iniValue(text, "Section", "Key"), value) << text;
  }
  EXPECT_EQ(iniValue("[Section]\r\n;Key=1\r\n", "Section", ";Key"), "") << "no key in a comment";
}

TEST(IniText, TakesDoubleByteCharactersWhole) {
  for (const char lead : {'\x81', '\x9F', '\xE0', '\xFC'}) {
    const auto name = [lead](const char* rest) { return lead + std::string(rest); };
    const std::string text =
        "[" + name("]") + "]\n" + name("ab=1\n") + name("Ac=2\n") + name("AB=3\n");
    EXPECT_EQ(iniValue(text, name("]"), name("Ab")), "3");
  }
  for (const char single : {'\x80', '\xA0', '\xDF', '\xFD'}) {
    const std::string name(1, single);
    EXPECT_EQ(iniValue("[" + name + "]\n" + name + "a=1\n", name, name + "A"), "1");
  }
}

TEST(IniText, WritesOneValueAndKeepsEveryOtherByte) {
  const std::pair<std::string, std::string> cases[] = {
      // The mark, the name's spelling and the line ends stay.
      {"\xEF\xBB\xBF; c\n[sEction]\n  kEy = old ; x\nB= 1 \n",
       "\xEF\xBB\xBF; c\n[sEction]\n  kEy =new\nB= 1 \n"},
      // A new key goes before the blank lines.
      {"[Section]\r\nA=1\r\n\r\n[Next]\r\nKey=other\r\n",
       "[Section]\r\nA=1\r\nKey=new\r\n\r\n[Next]\r\nKey=other\r\n"},
  };
  for (const auto& [before, after] : cases) {
    EXPECT_EQ(iniWithValue(before, "Section", "Key", "new"), after);
  }
}

}  // namespace
}  // namespace karvel
