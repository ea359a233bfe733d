#include "text/ini_text.h"

#include <gtest/gtest.h>

// What the contract of profile files leaves open: the contract's own cases are run on every
// platform's files.

namespace karvel {
namespace {

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

TEST(IniText, WritesOneValueAndKeepsEveryOtherByte) {
  const struct {
    const char* what;
    std::string before;
    std::string after;  // with "Key" of "Section" set to "new"
  } cases[] = {
      {"mark, name and line end stay", "\xEF\xBB\xBF; c\n[sEction]\n  kEy = old ; x\nB= 1 \n",
       "\xEF\xBB\xBF; c\n[sEction]\n  kEy =new\nB= 1 \n"},
      {"a new key goes before the blank lines", "[Section]\r\nA=1\r\n\r\n[Next]\r\nKey=other\r\n",
       "[Section]\r\nA=1\r\nKey=new\r\n\r\n[Next]\r\nKey=other\r\n"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(iniWithValue(c.before, "Section", "Key", "new"), c.after) << c.what;
  }
}

}  // namespace
}  // namespace karvel
