#include <gtest/gtest.h>

#include "selftest/page.h"

namespace karvel {
namespace {

TEST(Selftest, AProgramThatCrashesTellsWhatIsKnown) {
  const Ending ending{
      "[==========] Running 4 tests from 1 test suite.\r\n"
      "[ RUN      ] A.Passes\r\n[       OK ] A.Passes (3 ms)\r\n"
      "[ RUN      ] A.Fails\r\n[ DIFFERS  ] kX: other\r\nx.cpp:1: <\x83\x5C> & more\r\n"
      "[  FAILED  ] A.Fails (1 ms)\r\n[ RUN      ] A.Crashes\r\nlast words",
      0xC0000005U, "", 7};
  const Page page{{}, {testResultOf("tests", ending)}, {answerOf("why?", ending)}};
  EXPECT_EQ(page.results[0].planned, 4);
  EXPECT_EQ(page.results[0].passed, 1);
  const std::string html = page.html();
  for (const char* part : {"2件の不合格", "&lt;ソ&gt; &amp; more", "A.Crashes", "last words",
                           "<li>kX: other</li>", "答えが出ませんでした(終了コード 3221225477"}) {
    EXPECT_NE(html.find(part), std::string::npos) << part;
  }
}

TEST(Selftest, OnlyARunOfAllTestsPasses) {
  const std::string output =
      "[==========] Running 1 test from 1 test suite.\n[ RUN      ] A.B\n[       OK ] A.B (0 ms)\n";
  EXPECT_TRUE(testResultOf("tests", {output, 0, "", 1}).good());
  EXPECT_FALSE(testResultOf("tests", {output, 1, "", 1}).good());
  EXPECT_FALSE(testResultOf("tests", {output, {}, "stopped", 1}).good());
  EXPECT_FALSE(testResultOf("tests", {"", 0, "", 1}).good());
}

}  // namespace
}  // namespace karvel
