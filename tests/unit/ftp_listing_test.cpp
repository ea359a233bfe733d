#include "text/ftp_listing.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace karvel {
namespace {

constexpr DateTime kNow{2026, 3, 10, 12, 0, 0};

std::string describe(const std::optional<ListedEntry>& entry) {
  if (!entry) return "(none)";
  return (entry->folder ? "D[" : "F[") + entry->name + "] " + std::to_string(entry->size) + " " +
         formatDateMinute(entry->time);
}

struct Case {
  std::string line;
  std::string expected;
};

class ListingLine : public ::testing::TestWithParam<Case> {};

TEST_P(ListingLine, GivesTheEntryOrNothing) {
  EXPECT_EQ(describe(parseListingLine(GetParam().line, kNow)), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Unix, ListingLine,
    ::testing::Values(
        Case{"-rw-r--r--   1 ftp  ftp      1234567 Jan 01  2024 a.txt",
             "F[a.txt] 1234567 2024/01/01 00:00"},
        Case{"drwxr-xr-x   2 1000 1000       4096 Feb  3 09:05 sub dir",
             "D[sub dir] 4096 2026/02/03 09:05"},
        Case{"-rw-r--r--+  1 owner  12 Feb  3 09:05 nogroup", "F[nogroup] 12 2026/02/03 09:05"},
        Case{"-rw-r--r-- 1 0 Feb  3 09:05 noowner", "F[noowner] 0 2026/02/03 09:05"},
        Case{"-rw-r--r-- 1 Domain Users Staff 12 Feb  3 9:05 x", "F[x] 12 2026/02/03 09:05"},
        Case{"-rw-r--r-- 1 12 34 56 Jan 2 2024 numeric", "F[numeric] 56 2024/01/02 00:00"},
        Case{"-rw-r--r-- 1 a b 6442450944 Jan 01  2024 large",
             "F[large] 6442450944 2024/01/01 00:00"},
        Case{"-rw-r--r-- 1 a b 99999999999999999999999 Jan 01  2024 huge",
             "F[huge] 18446744073709551615 2024/01/01 00:00"},
        Case{"-rw-r--r-- 1 a b 1 Jan 01  2024  two blanks  in ",
             "F[ two blanks  in ] 1 2024/01/01 00:00"},
        Case{"-rw-r--r-- 1 a b 1 Jan 01 10:00   three", "F[  three] 1 2026/01/01 10:00"},
        Case{"-rw-r--r-- 1 a b 1 1 Jan 2024 dayfirst", "F[dayfirst] 1 2024/01/01 00:00"},
        Case{"-rw-r--r-- 1 a b 1 2024-01-31 23:59 iso", "F[iso] 1 2024/01/31 23:59"},
        Case{"-rw-r--r-- 1 a b 1 Jan 01  2024 1 Jan 02  2020 x",
             "F[1 Jan 02  2020 x] 1 2024/01/01 00:00"},
        Case{"drwxr-xr-x 2 a b 1 Jan 01  2024 .", "D[.] 1 2024/01/01 00:00"},
        Case{"drwxr-xr-x 2 a b 1 Jan 01  2024 ..", "D[..] 1 2024/01/01 00:00"},
        Case{"lrwxrwxrwx 1 a b 1 Jan 01  2024 link -> target", "F[link] 1 2024/01/01 00:00"},
        Case{"lrwxrwxrwx 1 a b 1 Jan 01  2024 link -> folder/", "D[link] 1 2024/01/01 00:00"},
        Case{"-rw-r--r-- 1 a b 1 Jan 01  2024 x -> y", "F[x -> y] 1 2024/01/01 00:00"},
        Case{"crw-r--r-- 1 a b 5, 1 Jan 01  2024 tty", "F[tty] 1 2024/01/01 00:00"}));

INSTANTIATE_TEST_SUITE_P(
    DateWithoutYear, ListingLine,
    ::testing::Values(Case{"-rw-r--r-- 1 a b 1 Mar 10 12:00 now", "F[now] 1 2026/03/10 12:00"},
                      Case{"-rw-r--r-- 1 a b 1 Mar 10 12:01 next", "F[next] 1 2025/03/10 12:01"},
                      Case{"-rw-r--r-- 1 a b 1 Dec 31 23:59 eve", "F[eve] 1 2025/12/31 23:59"},
                      Case{"-rw-r--r-- 1 a b 1 Feb 29 10:00 leap", "F[leap] 1 2024/02/29 10:00"}));

// The signs of month, day and year in code page 932, EUC-JP and UTF-8.
INSTANTIATE_TEST_SUITE_P(
    Japanese, ListingLine,
    ::testing::Values(
        Case{"-rw-r--r-- 1 a b 1 11\x8C\x8E 6\x93\xFA 14:21 x", "F[x] 1 2025/11/06 14:21"},
        Case{"-rw-r--r-- 1 a b 1 11\x8C\x8E"
             "6\x93\xFA 1996\x94N x",
             "F[x] 1 1996/11/06 00:00"},
        Case{"-rw-r--r-- 1 a b 1 11\xB7\xEE 6\xC6\xFC 14:21 x", "F[x] 1 2025/11/06 14:21"},
        Case{"-rw-r--r-- 1 a b 1  1\xB7\xEE 6\xC6\xFC 1996\xC7\xAF x", "F[x] 1 1996/01/06 00:00"},
        Case{"-rw-r--r-- 1 a b 1 11月  6日 14:21 x", "F[x] 1 2025/11/06 14:21"},
        Case{"-rw-r--r-- 1 a b 1 11月6日 1996年 x", "F[x] 1 1996/11/06 00:00"},
        Case{"-rw-r--r-- 1 a b 1 11月  6  1996 x", "F[x] 1 1996/11/06 00:00"}));

INSTANTIATE_TEST_SUITE_P(
    MsDos, ListingLine,
    ::testing::Values(
        Case{"01-31-24  02:30PM       <DIR>          sub dir", "D[sub dir] 0 2024/01/31 14:30"},
        Case{"01-31-99  12:05AM                 1234 a b.txt", "F[a b.txt] 1234 1999/01/31 00:05"},
        Case{"01-31-2024  12:05PM           6442450944 x", "F[x] 6442450944 2024/01/31 12:05"},
        Case{"01-31-2024  23:59                    1  x", "F[ x] 1 2024/01/31 23:59"},
        Case{"13-31-24  02:30PM       <DIR>          x", "(none)"},
        Case{"01-31-24  13:30PM       <DIR>          x", "(none)"}));

INSTANTIATE_TEST_SUITE_P(
    NoEntry, ListingLine,
    ::testing::Values(Case{"", "(none)"}, Case{"total 12", "(none)"}, Case{"合計 12", "(none)"},
                      Case{"just some words", "(none)"},
                      Case{"-rw-r--r-- 1 a b 1 Jan 01  2024 ", "(none)"},
                      Case{"-rw-r--r-- 1 a b 1 Jan 01  2024", "(none)"},
                      Case{"-rw-r--r-- 1 a b 1 Jan 32  2024 x", "(none)"},
                      Case{"-rw-r--r-- 1 a b 1 Feb 30 10:00 x", "(none)"},
                      Case{"-rw-r--r-- 1 a b 1 Jan 01 24:00 x", "(none)"},
                      Case{"-rw-r--r-- 1 a b 1 0月 6日 14:21 x", "(none)"},
                      Case{"-rw-r--r-- 1 a b x Jan 01  2024 x", "(none)"},
                      Case{"-rw-r--r-- 1 a b 1 Jan 01  2024 ../x", "(none)"},
                      Case{"-rw-r--r-- 1 a b 1 Jan 01  2024 a\\b", "(none)"},
                      Case{"-rw-r--r-- 1 a b 1 Jan 01  2024 a\tb", "(none)"},
                      Case{"-rw-r--r-- 1 a b 1 Jan 01  2024 a\x7F", "(none)"},
                      Case{std::string("-rw-r--r-- 1 a b 1 Jan 01  2024 a") + '\0' + "b",
                           "(none)"}));

INSTANTIATE_TEST_SUITE_P(
    Names, ListingLine,
    ::testing::Values(
        // UTF-8 becomes code page 932, what that lacks "?".
        Case{"-rw-r--r-- 1 a b 1 Jan 01  2024 表😀.txt", "F[\x95\x5C?.txt] 1 2024/01/01 00:00"},
        // A second byte that looks like the backslash is none.
        Case{"-rw-r--r-- 1 a b 1 Jan 01  2024 \x95\x5C", "F[\x95\x5C] 1 2024/01/01 00:00"},
        // Half-width katakana that could be UTF-8 by chance.
        Case{"-rw-r--r-- 1 a b 1 Jan 01  2024 \xC3\xBD", "F[\xC3\xBD] 1 2024/01/01 00:00"}));

TEST(FtpListing, SkipsWhatIsNoEntry) {
  FtpListing listing(
      "total 3\r\n"
      "-rw-r--r-- 1 a b 1 Jan 01  2024 one\r\n"
      "\r\n"
      "ls: cannot open\n"
      "-rw-r--r-- 1 a b 2 Jan 01  2024 two\n"
      "-rw-r--r-- 1 a b 3 Jan 01  2024 three",
      kNow);
  EXPECT_EQ(describe(listing.next()), "F[one] 1 2024/01/01 00:00");
  EXPECT_EQ(describe(listing.next()), "F[two] 2 2024/01/01 00:00");
  EXPECT_EQ(describe(listing.next()), "F[three] 3 2024/01/01 00:00");
  EXPECT_EQ(describe(listing.next()), "(none)");
  EXPECT_EQ(describe(FtpListing("", kNow).next()), "(none)");
}

TEST(FtpListing, CutsLongNamesBetweenCharacters) {
  std::string name = "a";
  for (int i = 0; i < 200; ++i) name += "\x95\x5C";
  const auto entry = parseListingLine("-rw-r--r-- 1 a b 1 Jan 01  2024 " + name, kNow);
  ASSERT_TRUE(entry.has_value());
  EXPECT_EQ(entry->name, name.substr(0, 259));
}

TEST(FtpListing, TakesTimeInProportionToItsSize) {
  constexpr int kEntries = 200'000;
  constexpr std::size_t kLongLine = 10'000'000;
  std::string text = std::string(kLongLine, ' ') + "\r\n-rw-r--r-- 1 " +
                     std::string(kLongLine, '1') + "\r\n" + std::string(kLongLine, '\n');
  for (int i = 0; i < kEntries; ++i) {
    text += "-rw-r--r-- 1 a b 1 Jan 01  2024 " + std::to_string(i) + "\r\n";
  }
  const auto begin = std::chrono::steady_clock::now();
  FtpListing listing(std::move(text), kNow);
  int count = 0;
  while (listing.next()) ++count;
  EXPECT_EQ(count, kEntries);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds{20});
}

}  // namespace
}  // namespace karvel
