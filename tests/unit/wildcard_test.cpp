#include "text/wildcard.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace karvel {
namespace {

TEST(Wildcard, MatchesWholeNames) {
  using Pair = std::pair<const char*, const char*>;
  for (const auto& [name, pattern] :
       {Pair{"A.TXT", "*.txt"}, Pair{"a.txt", "*.TxT"}, Pair{".txt", "*.txt"}, Pair{"", "*"},
        Pair{"a.txt.txt", "*.txt"}, Pair{"", ""}, Pair{"表ソ.txt", "??.txt"},
        Pair{"a-b-c", "a*b*c"}, Pair{"a\\b", "a\\b"}, Pair{"aab", "*ab"}}) {
    EXPECT_TRUE(matchesWildcard(name, pattern)) << name << " ~ " << pattern;
  }
  for (const auto& [name, pattern] : {Pair{"a.txtx", "*.txt"}, Pair{"atxt", "*.txt"}, Pair{"a", ""},
                                      Pair{"", "?"}, Pair{"a", "a?"}, Pair{"表ソ.txt", "?.txt"},
                                      Pair{"a-b-d", "a*b*c"}, Pair{"a.txt", "[a].txt"}}) {
    EXPECT_FALSE(matchesWildcard(name, pattern)) << name << " ~ " << pattern;
  }
  EXPECT_FALSE(matchesWildcard(std::string(2000, 'a'), "*a*a*a*a*a*a*a*a*b")) << "without delay";
}

}  // namespace
}  // namespace karvel
