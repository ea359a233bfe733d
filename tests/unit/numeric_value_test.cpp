#include "text/numeric_value.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <random>
#include <regex>

namespace karvel {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

/// The rule as a pattern over the text without its blanks.
double valueByPattern(std::string text) {
  static const std::regex kPrefixed("&[Hh]([0-9A-Fa-f]+)|&[Oo]([0-7]+)", std::regex::optimize);
  static const std::regex kDecimal(R"(([+-]?(\d+\.?\d*|\.\d+))([eEdD]([+-]?\d+))?)",
                                   std::regex::optimize);
  text.erase(std::remove_if(text.begin(), text.end(),
                            [](char c) { return c == ' ' || c == '\t' || c == '\n'; }),
             text.end());
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

}  // namespace
}  // namespace karvel
