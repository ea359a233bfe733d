#include "text/tab_fields.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace karvel {
namespace {

constexpr std::size_t kCount = 4;

std::vector<std::string> cutSlowly(const std::string& line) {
  std::vector<std::string> fields(1);
  for (const char c : line) {
    if (c == '\t') {
      fields.emplace_back();
    } else {
      fields.back() += c;
    }
  }
  return fields;
}

void expectSameAsCutSlowly(const std::string& line) {
  const std::vector<std::string> expected = cutSlowly(line);
  TabFields<kCount> fields;
  ASSERT_EQ(fields.split(line), expected.size() == kCount) << testing::PrintToString(line);
  if (expected.size() != kCount) return;
  for (std::size_t i = 0; i < kCount; ++i) {
    EXPECT_EQ(fields[i], expected[i]) << i << " of " << testing::PrintToString(line);
  }
}

TEST(TabFields, CutsLinesOfEveryLengthAtEveryPlace) {
  // Characters that differ from TAB in one bit, or by one, would be taken for it by sloppy
  // arithmetic on eight bytes at once, above all right behind a TAB.
  const std::string characters("\t\t\t\x08\x0A\x0B\x89\x01\x00\xFF\x80 a", 13);
  std::mt19937 random(1);
  for (int round = 0; round < 20'000; ++round) {
    std::string line(random() % 28, 'x');
    for (char& c : line) {
      if (random() % 2 == 0) c = characters[random() % characters.size()];
    }
    expectSameAsCutSlowly(line);
  }
}

TEST(TabFields, CanBeUsedAgain) {
  TabFields<kCount> fields;
  EXPECT_FALSE(fields.split("1\t2\t3\t4\t5"));
  EXPECT_FALSE(fields.split(""));
  ASSERT_TRUE(fields.split("\t\t\tlast"));
  EXPECT_EQ(fields[0], "");
  EXPECT_EQ(fields[3], "last");
}

}  // namespace
}  // namespace karvel
