#include "text/numeric_value.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace karvel {
namespace {

struct Case {
  std::string text;
  double value;
};

TEST(NumericValue, TakesTheLongestLeadingNumber) {
  const Case cases[] = {
      {"", 0},       {"09", 9},
      {"2x", 2},     {"x2", 0},
      {"-5", -5},    {"+5", 5},
      {"--5", 0},    {"1.5.6", 1.5},
      {".5", 0.5},   {"5.", 5},
      {".", 0},      {"-", 0},
      {"1,234", 1},  {"1e3", 1000},
      {"1E+2", 100}, {"1d2", 100},
      {"1e", 1},     {"1e+", 1},
      {"e5", 0},     {"&H1F", 31},
      {"&hfg", 15},  {"&O17", 15},
      {"&o8", 0},    {"&H", 0},
      {"&X1", 0},    {"&HFFFFFFFFFF", 1099511627775.0},
      {"００１", 0}, {"inf", 0},
      {"nan", 0},    {"0x10", 0},
      {"00000", 0},  {"00123", 123},
  };
  for (const Case& c : cases) EXPECT_EQ(numericValue(c.text), c.value) << '"' << c.text << '"';
}

TEST(NumericValue, IgnoresBlanksTabsAndLineFeedsAnywhere) {
  EXPECT_EQ(numericValue(" 1 2\t3\n4 "), 1234);
  EXPECT_EQ(numericValue("1 e 2"), 100);
  EXPECT_EQ(numericValue("& H 1 0"), 16);
  EXPECT_EQ(numericValue("1\r2"), 1) << "a carriage return ends the number";
  EXPECT_EQ(numericValue("\u30001"), 0) << "an ideographic space is no blank";
}

TEST(NumericValue, StaysFiniteWhateverTheText) {
  constexpr double kLargest = std::numeric_limits<double>::max();
  EXPECT_EQ(numericValue("1e999"), kLargest);
  EXPECT_EQ(numericValue("-1e999"), -kLargest);
  EXPECT_EQ(numericValue("1e-999"), 0);
  EXPECT_EQ(numericValue(std::string(10000, '9')), kLargest);
  EXPECT_EQ(numericValue("0." + std::string(10000, '0') + "1"), 0);
  EXPECT_EQ(numericValue("&H" + std::string(10000, 'F')), kLargest);
  EXPECT_EQ(numericValue("1e99999999999999999999"), kLargest);
}

TEST(WholeNumericValue, RoundsAndStaysWithinItsType) {
  EXPECT_EQ(wholeNumericValue("21.5"), 22);
  EXPECT_EQ(wholeNumericValue("21.4"), 21);
  EXPECT_EQ(wholeNumericValue("1e99"), std::numeric_limits<int>::max());
  EXPECT_EQ(wholeNumericValue("-1e99"), std::numeric_limits<int>::min());
}

}  // namespace
}  // namespace karvel
