#include "text/numeric_value.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace karvel {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

TEST(NumericValue, IsTheLongestLeadingNumber) {
  const struct {
    std::string text;
    double value;
  } cases[] = {
      {"", 0},
      {"09", 9},
      {"2x", 2},
      {"x2", 0},
      {"-5", -5},
      {"+5", 5},
      {"--5", 0},
      {"1.5.6", 1.5},
      {".5", 0.5},
      {"5.", 5},
      {".", 0},
      {"-", 0},
      {"1E+2", 100},
      {"1d2", 100},
      {"1e", 1},
      {"1e+", 1},
      {"&H1F", 31},
      {"&hfg", 15},
      {"&O17", 15},
      {"&o18", 1},
      {"&H", 0},
      {"&X1", 0},
      {"００１", 0},
      {"inf", 0},
      {"0x10", 0},
      {" 1 2\t3\n4 ", 1234},
      {"1 e 2", 100},
      {"& H 1 0", 16},
      // A carriage return ends the number; an ideographic space is no blank.
      {"1\r2", 1},
      {"\u30001", 0},
      // It stays finite.
      {"1e999", kLargest},
      {"-1e99999999999999999999", -kLargest},
      {"1e-999", 0},
      {std::string(10000, '9'), kLargest},
      {"0." + std::string(10000, '0') + "1", 0},
      {"&H" + std::string(10000, 'F'), kLargest},
  };
  for (const auto& c : cases) EXPECT_EQ(numericValue(c.text), c.value) << c.text.substr(0, 20);
}

TEST(WholeNumericValue, RoundsAndStaysWithinItsType) {
  EXPECT_EQ(wholeNumericValue("21.5"), 22);
  EXPECT_EQ(wholeNumericValue("21.4"), 21);
  EXPECT_EQ(wholeNumericValue("1e99"), std::numeric_limits<int>::max());
  EXPECT_EQ(wholeNumericValue("-1e99"), std::numeric_limits<int>::min());
}

}  // namespace
}  // namespace karvel
