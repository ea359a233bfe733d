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
      {"letter case", "[sECTION]\r\nkEY=v\r\n", "v"},
      {"blanks and tabs", " \t[ Section ]\r\n\t Key \t= \tv w\t \r\n", "v w"},
      {"double quotes", "[Section]\r\nKey=\" v \"\r\n", " v "},
      {"single quotes", "[Section]\r\nKey='v'\r\n", "v"},
      {"one pair only", "[Section]\r\nKey=\"\"v\"\"\r\n", "\"v\""},
      {"unequal quotes", "[Section]\r\nKey=\"v'\r\n", "\"v'"},
      {"a lone quote", "[Section]\r\nKey=\"\r\n", "\""},
      {"first key wins", "[Section]\r\nKey=\r\nKey=2\r\n", ""},
      {"first section wins", "[Section]\r\nOther=1\r\n[Section]\r\nKey=2\r\n", ""},
      {"other section", "[Sectio]\r\nKey=1\r\n[Section2]\r\nKey=2\r\n", ""},
      {"no equals sign", "[Section]\r\nKey\r\nKey2=1\r\n", ""},
      {"value with equals", "[Section]\r\nKey=a=b\r\n", "a=b"},
      {"line feeds alone", "[Section]\nKey=v\n", "v"},
      {"carriage returns alone, no last line end", "[Section]\rKey=v", "v"},
      {"unclosed section", "[Section\r\nKey=v\r\n", ""},
      {"before any section", "Key=v\r\n[Section]\r\n", ""},
      {"NUL bytes", std::string(2, '\0') + "[Section]\r\nKey=v\r\n", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(iniValue(c.text, "Section", "Key"), c.value) << c.what;
}

TEST(IniText, TakesSecondBytesOfCharactersForNoSyntax) {
  // The second bytes are "]", "A" and "a".
  const std::string section = "a\x83\x5D" + std::string("b");
  const std::string text = "[" + section + "]\r\n;x=1\r\n\x83\x41=upper\r\n\x83\x61=lower\r\n";
  EXPECT_EQ(iniValue(text, "A\x83\x5D" + std::string("B"), "\x83\x41"), "upper");
  EXPECT_EQ(iniValue(text, section, "\x83\x61"), "lower");
  EXPECT_EQ(iniValue(text, section, ";x"), "") << "a comment is no key";
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
      {"missing last line end", "[Other]\r\nKey=1", "[Other]\r\nKey=1\r\n[Section]\r\nKey=new\r\n"},
      {"first of two keys, no last line end", "[Section]\r\nKey=1\r\nKey=2",
       "[Section]\r\nKey=new\r\nKey=2"},
      {"garbage stays", "\x01\x02=\xFF\r\n[Section]\r\nno sign\r\nKey=1",
       "\x01\x02=\xFF\r\n[Section]\r\nno sign\r\nKey=new"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(iniWithValue(c.before, "Section", "Key", "new"), c.after) << c.what;
  }
}

}  // namespace
}  // namespace karvel
