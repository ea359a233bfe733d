#include "text/numeric_value.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>

namespace karvel {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

TEST(NumericValue, IsTheLongestLeadingNumber) {
  using Case = std::pair<std::string, double>;
  const Case cases[] = {{"", 0},        {"09", 9},
                        {"2x", 2},      {"x2", 0},
                        {"-5", -5},     {"+5", 5},
                        {"--5", 0},     {"1.5.6", 1.5},
                        {".5", 0.5},    {"5.", 5},
                        {".", 0},       {"-", 0},
                        {"1E+2", 100},  {"1d2", 100},
                        {"1e", 1},      {"1e+", 1},
                        {"&H1F", 31},   {"&hfg", 15},
                        {"&O17", 15},   {"&o18", 1},
                        {"&H", 0},      {"&X1", 0},
                        {"００１", 0},  {"inf", 0},
                        {"0x10", 0},    {" 1 2\t3\n4 ", 1234},
                        {"1 e 2", 100}, {"& H 1 0", 16},
                        {"1\r2", 1},    {"\u30001", 0}};
  for (const auto& [text, value] : cases) EXPECT_EQ(numericValue(text), value) << text;
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

}  // namespace
}  // namespace karvel
