#include "text/wildcard.h"

#include <gtest/gtest.h>

#include <string>

namespace karvel {
namespace {

TEST(Wildcard, MatchesWholeNames) {
  const struct {
    const char* name;
    const char* pattern;
    bool matches;
  } cases[] = {
      {"A.TXT", "*.txt", true},
      {"a.txt", "*.TxT", true},
      {".txt", "*.txt", true},
      {"a.txtx", "*.txt", false},
      {"atxt", "*.txt", false},
      {"a.txt.txt", "*.txt", true},
      {"", "*", true},
      {"", "", true},
      {"a", "", false},
      {"", "?", false},
      {"a", "a?", false},
      {"表ソ.txt", "??.txt", true},
      {"表ソ.txt", "?.txt", false},
      {"a-b-c", "a*b*c", true},
      {"a-b-d", "a*b*c", false},
      {"a.txt", "[a].txt", false},
      {"a\\b", "a\\b", true},
      {"aab", "*ab", true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(matchesWildcard(c.name, c.pattern), c.matches) << c.name << " ~ " << c.pattern;
  }
  EXPECT_FALSE(matchesWildcard(std::string(2000, 'a'), "*a*a*a*a*a*a*a*a*b")) << "without delay";
}

}  // namespace
}  // namespace karvel
