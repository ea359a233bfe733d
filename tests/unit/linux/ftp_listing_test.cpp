#include "platform/linux/internet/ftp_listing.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <utility>

namespace karvel {
namespace {

constexpr DateTime kNow{2026, 3, 10, 12, 0, 0};
constexpr const char* kNone = "(none)";

std::string describe(const std::optional<ListedEntry>& entry) {
  if (!entry) return kNone;
  return (entry->folder ? "D[" : "F[") + entry->name + "] " + std::to_string(entry->size) + " " +
         formatDateMinute(entry->time);
}

TEST(FtpListing, ReadsLinesOfEitherStyle) {
  const std::pair<const char*, const char*> cases[] = {
      {"-rw-r--r--   1 ftp  ftp      1234567 Jan 01  2024 a.txt",
       "F[a.txt] 1234567 2024/01/01 00:00"},
      {"drwxr-xr-x   2 1000 1000       4096 Feb  3 09:05 sub dir",
       "D[sub dir] 4096 2026/02/03 09:05"},
      {"drwxr-xr-x 2 a b 1 Jan 01  2024 ..", "D[..] 1 2024/01/01 00:00"},
      {"-rw-r--r--+  1 owner  12 Feb  3 09:05 nogroup", "F[nogroup] 12 2026/02/03 09:05"},
      {"-rw-r--r-- 1 Domain Users Staff 12 Feb  3 9:05 x", "F[x] 12 2026/02/03 09:05"},
      {"-rw-r--r-- 1 a b 6442450944 Jan 01  2024 large", "F[large] 6442450944 2024/01/01 00:00"},
      {"-rw-r--r-- 1 a b 99999999999999999999999 Jan 01  2024 huge",
       "F[huge] 18446744073709551615 2024/01/01 00:00"},
      {"lrwxrwxrwx 1 a b 1 Jan 01  2024 link -> target", "F[link] 1 2024/01/01 00:00"},
      {"lrwxrwxrwx 1 a b 1 Jan 01  2024 link -> folder/", "D[link] 1 2024/01/01 00:00"},
      {"-rw-r--r-- 1 a b 1 Jan 01  2024 x -> y", "F[x -> y] 1 2024/01/01 00:00"},
      {"crw-r--r-- 1 a b 5, 1 Jan 01  2024 tty", "F[tty] 1 2024/01/01 00:00"},
      {"01-31-24  02:30PM       <DIR>          sub dir", "D[sub dir] 0 2024/01/31 14:30"},
      {"01-31-99  12:05AM                 1234 a b.txt", "F[a b.txt] 1234 1999/01/31 00:05"},
      {"01-31-2024  23:59                    1  x", "F[ x] 1 2024/01/31 23:59"},
      {"13-31-24  02:30PM       <DIR>          x", kNone},
      {"01-31-24  13:30PM       <DIR>          x", kNone},
      {"", kNone},
      {"合計 12", kNone},
      {"-rw-r--r-- 1 a b x Jan 01  2024 x", kNone},
      {"-rw-r--r-- 1 a b 1 Jan 01  2024", kNone},
  };
  for (const auto& [line, entry] : cases) EXPECT_EQ(describe(parseListingLine(line, kNow)), entry);
}

/// The time and the name that stand behind the size.
std::string timeAndName(const std::string& rest) {
  const auto entry = parseListingLine("-rw-r--r-- 1 a b 1 " + rest, kNow);
  return entry ? formatDateMinute(entry->time) + " [" + entry->name + "]" : kNone;
}

TEST(FtpListing, ReadsTimesAndNames) {
  const std::pair<std::string, const char*> cases[] = {
      // A date without a year is the latest one that does not lie ahead.
      {"Mar 10 12:00 now", "2026/03/10 12:00 [now]"},
      {"Mar 10 12:01 next", "2025/03/10 12:01 [next]"},
      {"Feb 29 10:00 leap", "2024/02/29 10:00 [leap]"},
      {"1 Jan 2024 dayfirst", "2024/01/01 00:00 [dayfirst]"},
      {"2024-01-31 23:59 iso", "2024/01/31 23:59 [iso]"},
      // The signs of month, day and year in code page 932, EUC-JP and UTF-8.
      {"11\x8C\x8E 6\x93\xFA 14:21 x", "2025/11/06 14:21 [x]"},
      {"1\x8C\x8E 6\x93\xFA 1996\x94N x", "1996/01/06 00:00 [x]"},
      {"11\xB7\xEE 6\xC6\xFC 14:21 x", "2025/11/06 14:21 [x]"},
      {" 1\xB7\xEE 6\xC6\xFC 1996\xC7\xAF x", "1996/01/06 00:00 [x]"},
      {"11月6日 1996年 x", "1996/11/06 00:00 [x]"},
      {"11月  6  1996 x", "1996/11/06 00:00 [x]"},
      {"Jan 32  2024 x", kNone},
      {"Feb 30 10:00 x", kNone},
      {"Jan 01 24:00 x", kNone},
      {"0月 6日 14:21 x", kNone},
      {"Jan 01  2024  two blanks  in ", "2024/01/01 00:00 [ two blanks  in ]"},
      {"Jan 01  2024 1 Jan 02  2020 x", "2024/01/01 00:00 [1 Jan 02  2020 x]"},
      {"Jan 01  2024 ", kNone},
      {"Jan 01  2024 ../x", kNone},
      {"Jan 01  2024 a\\b", kNone},
      {"Jan 01  2024 a\x7F", kNone},
      {std::string("Jan 01  2024 a\0b", 16), kNone},
      // UTF-8 becomes code page 932, what that lacks "?". A second byte that looks like the
      // backslash is none; what is UTF-8 only by chance, or no shortest form, stays as it is.
      {"Jan 01  2024 表😀.txt", "2024/01/01 00:00 [\x95\x5C?.txt]"},
      {"Jan 01  2024 \x95\x5C", "2024/01/01 00:00 [\x95\x5C]"},
      {"Jan 01  2024 \xC3\xBD", "2024/01/01 00:00 [\xC3\xBD]"},
      {"Jan 01  2024 \xE0\x80\x80", "2024/01/01 00:00 [\xE0\x80\x80]"},
  };
  for (const auto& [rest, found] : cases) EXPECT_EQ(timeAndName(rest), found) << rest;
}

TEST(FtpListing, SkipsWhatIsNoEntry) {
  FtpListing listing(
      "total 3\r\n-rw-r--r-- 1 a b 1 Jan 01  2024 one\r\n\r\nls: cannot open\n"
      "-rw-r--r-- 1 a b 2 Jan 01  2024 two\n-rw-r--r-- 1 a b 3 Jan 01  2024 three",
      kNow);
  for (const char* name : {"F[one] 1", "F[two] 2", "F[three] 3"}) {
    EXPECT_EQ(describe(listing.next()), std::string(name) + " 2024/01/01 00:00");
  }
  EXPECT_EQ(describe(listing.next()), kNone);
}

TEST(FtpListing, CutsLongNamesBetweenCharacters) {
  for (const std::string first : {"a", ""}) {
    std::string name = first;
    for (int i = 0; i < 200; ++i) name += "\x95\x5C";
    const auto entry = parseListingLine("-rw-r--r-- 1 a b 1 Jan 01  2024 " + name, kNow);
    ASSERT_TRUE(entry.has_value());
    EXPECT_EQ(entry->name, name.substr(0, 258 + first.size()));
  }
}

TEST(FtpListing, TakesTimeInProportionToItsSize) {
  constexpr int kEntries = 50'000;
  std::string text(1'000'000, ' ');
  text.append("\r\n-rw-r--r-- 1 ").append(1'000'000, '1').append(1'000'000, '\n');
  for (int i = 0; i < kEntries; ++i) text += "-rw-r--r-- 1 a b 1 Jan 01  2024 x\r\n";
  const auto begin = std::chrono::steady_clock::now();
  FtpListing listing(std::move(text), kNow);
  int count = 0;
  while (listing.next()) ++count;
  EXPECT_EQ(count, kEntries);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds{20});
}

}  // namespace
}  // namespace karvel
