#include "text/ini_text.h"

#include <gtest/gtest.h>

namespace karvel {
namespace {

TEST(IniText, FindsValues) {
  const struct {
    const char* what;
    std::string text;
    std::string value;  // of key "Key" in section "Section"
  } cases[] = {
      {"plain", "[Section]\r\nKey=v\r\n", "v"},
      {"letter case", "[sECTION]\r\nkEY=v\r\n", "v"},
      {"blanks and tabs", " \t[ Section ]\r\n\t Key \t= \tv w\t \r\n", "v w"},
      {"double quotes", "[Section]\r\nKey=\" v \"\r\n", " v "},
      {"single quotes", "[Section]\r\nKey='v'\r\n", "v"},
      {"one pair only", "[Section]\r\nKey=\"\"v\"\"\r\n", "\"v\""},
      {"unequal quotes", "[Section]\r\nKey=\"v'\r\n", "\"v'"},
      {"a lone quote", "[Section]\r\nKey=\"\r\n", "\""},
      {"first key wins", "[Section]\r\nKey=1\r\nKey=2\r\n", "1"},
      {"first section wins", "[Section]\r\nOther=1\r\n[Section]\r\nKey=2\r\n", ""},
      {"other section", "[Sectio]\r\nKey=1\r\n[Section2]\r\nKey=2\r\n", ""},
      {"no equals sign", "[Section]\r\nKey\r\nKey2=1\r\n", ""},
      {"comment", "[Section]\r\n;Key=1\r\n; Key=2\r\nKey=3\r\n", "3"},
      {"empty value", "[Section]\r\nKey=\r\nKey=2\r\n", ""},
      {"value with equals", "[Section]\r\nKey=a=b\r\n", "a=b"},
      {"line feeds alone", "[Section]\nKey=v\n", "v"},
      {"carriage returns alone", "[Section]\rKey=v\r", "v"},
      {"no line end", "[Section]\r\nKey=v", "v"},
      {"unclosed section", "[Section\r\nKey=v\r\n", ""},
      {"before any section", "Key=v\r\n[Section]\r\n", ""},
      {"empty", "", ""},
      {"NUL bytes", std::string(2, '\0') + "[Section]\r\nKey=v\r\n", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(iniValue(c.text, "Section", "Key"), c.value) << c.what;
}

TEST(IniText, TakesSecondBytesOfCharactersForNoSyntax) {
  // 0x83 0x5B is one character, and so is 0x83 0x5D; 0x83 0x41 and 0x83 0x61 are two of them.
  const std::string text =
      "[a\x83\x5D"
      "b]\r\n\x83\x41=upper\r\n\x83\x61=lower\r\n\x83\x5B=bracket\r\n";
  EXPECT_EQ(iniValue(text,
                     "A\x83\x5D"
                     "B",
                     "\x83\x41"),
            "upper");
  EXPECT_EQ(iniValue(text,
                     "a\x83\x5D"
                     "b",
                     "\x83\x61"),
            "lower");
  EXPECT_EQ(iniValue(text,
                     "a\x83\x5D"
                     "b",
                     "\x83\x5B"),
            "bracket");
  EXPECT_EQ(iniValue("[\x83\x5D]\r\nKey=\x95\x5C\r\n", "\x83\x5D", "Key"), "\x95\x5C");
}

TEST(IniText, WritesOneValueAndKeepsEveryOtherByte) {
  const struct {
    const char* what;
    std::string before;
    std::string after;  // with "Key" of "Section" set to "new"
  } cases[] = {
      {"empty file", "", "[Section]\r\nKey=new\r\n"},
      {"replacement keeps name and line end", "; c\n[sEction]\n  kEy = old ; x\nB= 1 \n",
       "; c\n[sEction]\n  kEy =new\nB= 1 \n"},
      {"new key goes before the blank lines", "[Section]\r\nA=1\r\n\r\n[Next]\r\nKey=other\r\n",
       "[Section]\r\nA=1\r\nKey=new\r\n\r\n[Next]\r\nKey=other\r\n"},
      {"new section", "[Other]\r\nKey=1\r\n", "[Other]\r\nKey=1\r\n[Section]\r\nKey=new\r\n"},
      {"missing last line end", "[Other]\r\nKey=1", "[Other]\r\nKey=1\r\n[Section]\r\nKey=new\r\n"},
      {"key in a last line without end", "[Section]\r\nKey=1", "[Section]\r\nKey=new"},
      {"first of two keys", "[Section]\r\nKey=1\r\nKey=2\r\n", "[Section]\r\nKey=new\r\nKey=2\r\n"},
      {"garbage stays", "\x01\x02=\xFF\r\n[Section]\r\nno sign\r\nKey=1\r\n",
       "\x01\x02=\xFF\r\n[Section]\r\nno sign\r\nKey=new\r\n"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(iniWithValue(c.before, "Section", "Key", "new"), c.after) << c.what;
  }
}

}  // namespace
}  // namespace karvel
