#include "platform/linux/internet/ftp_listing.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <string>
#include <vector>

namespace karvel {
namespace {

constexpr DateTime kNow{2026, 3, 10, 12, 0, 0};
constexpr const char* kNone = "(none)";

std::string describe(const std::optional<Internet::FindData>& entry) {
  if (!entry) return kNone;
  return (entry->folder ? "D[" : "F[") + entry->name + "] " + std::to_string(entry->size) + " " +
         formatDateMinute(entry->time);
}

// One line of each kind, as servers write it, and what it says.
TEST(FtpListing, ReadsTheLinesOfEveryFormat) {
  const std::pair<std::string, const char*> samples[] = {
      // Unix: columns
      {"-rw-r--r--   1 ftp  ftp      1234567 Jan 01  2024 a.txt",
       "F[a.txt] 1234567 2024/01/01 00:00"},
      {"drwxr-xr-x   2 1000 1000       4096 Feb  3 09:05 sub dir",
       "D[sub dir] 4096 2026/02/03 09:05"},
      {"-rw-r--r--+  1 owner  12 Feb  3 9:05 no group", "F[no group] 12 2026/02/03 09:05"},
      {"-rw-r--r-- 1 Domain Users Staff 12 Feb  3 9:05 x", "F[x] 12 2026/02/03 09:05"},
      {"drwx 1 a b 5 Feb  3 09:05 shorter", "D[shorter] 5 2026/02/03 09:05"},
      {"  1234   8 -rw-r--r-- 1 a b 5 Feb  3 09:05 inode", "F[inode] 5 2026/02/03 09:05"},
      {"-rw-r--r--\t1\ta\tb\t5\tFeb\t3\t09:05\ttabs", "F[tabs] 5 2026/02/03 09:05"},
      {"crw-r--r-- 1 a b 5, 1 Jan 01  2024 tty", "F[tty] 0 2024/01/01 00:00"},
      {"-r--r--r-- 1 a longgroup123456 Feb 12 17:20 x", "F[x] 123456 2026/02/12 17:20"},
      {"-rw-r--r-- 1 a b 34.5k Feb  3 09:05 x", "F[x] 34816 2026/02/03 09:05"},
      {"-rw-r--r-- 1 a b 99999999999999999999999 Jan 01  2024 huge",
       "F[huge] 18446744073709551615 2024/01/01 00:00"},
      {"drwxrwxr-x               folder        2 May 10  1996 network",
       "D[network] 2 1996/05/10 00:00"},
      {"d [R----F--] supervisor            512       Jan 16 18:53    login",
       "D[login] 512 2026/01/16 18:53"},
      {"-[RWCEAFMS] rhesus  214059  Oct 20 15:27  cx.exe", "F[cx.exe] 214059 2025/10/20 15:27"},
      {"ar-xr-xr-x 2 none none 512 Apr 26 17:52 Plan 9", "F[Plan 9] 512 2025/04/26 17:52"},
      {"0100644   500  101   12345    123456789       in digits",
       "F[in digits] 12345 1973/11/29 21:33"},
      {"040755 500 101 1024 Nov 06 2025 x", "D[x] 1024 2025/11/06 00:00"},
      {"0120777 0 0 7 Nov 06 14:21 link -> target", "D[link] 7 2025/11/06 14:21"},
      // Unix: names
      {"-rw-r--r-- 1 a b 1 Jan 01  2024  blanks  in ", "F[ blanks  in ] 1 2024/01/01 00:00"},
      {"-rw-r--r-- 1 a b 1 Nov 06 2025   left", "F[ left] 1 2025/11/06 00:00"},
      {"lrwxrwxrwx 1 a b 1 Jan 01  2024 link -> target", "D[link] 1 2024/01/01 00:00"},
      {"lrwxrwxrwx 1 a b 1 Jan 01  2024 link@ -> a/", "D[link] 1 2024/01/01 00:00"},
      {"-rw-r--r-- 1 a b 1 Jan 01  2024 x -> y", "F[x -> y] 1 2024/01/01 00:00"},
      {"drwxr-xr-x 1 a b 1 Jan 01  2024 marked/", "D[marked] 1 2024/01/01 00:00"},
      {"-rwxr-xr-x 1 a b 1 Jan 01  2024 run*", "F[run] 1 2024/01/01 00:00"},
      {"-rw-r--r-- 1 a b 1 Jan 01  2024 star*", "F[star*] 1 2024/01/01 00:00"},
      {"srwxr-xr-x 1 a b 1 Jan 01  2024 s=", "F[s] 1 2024/01/01 00:00"},
      {"prw-r--r-- 1 a b 1 Jan 01  2024 p|", "F[p] 1 2024/01/01 00:00"},
      // Unix: dates; without a year it is the latest one not more than a day ahead
      {"-rw-r--r-- 1 a b 1 Mar 11 12:00 x", "F[x] 1 2026/03/11 12:00"},
      {"-rw-r--r-- 1 a b 1 Mar 11 12:01 x", "F[x] 1 2025/03/11 12:01"},
      {"-rw-r--r-- 1 a b 1 Feb 29 10:00 x", "F[x] 1 2024/02/29 10:00"},
      {"-rw-r--r-- 1 100 100 12 Nov 2025 x", "F[x] 100 2025/11/12 00:00"},
      {"-rw-r--r-- 1 a b 1 Oct 08, 2002 09:47 x", "F[x] 1 2002/10/08 09:47"},
      {"-rw-r--r-- 1 a b 1 Fri Nov  6 14:21:30 1998 x", "F[x] 1 1998/11/06 14:21"},
      {"-rw-r--r-- 1 a b 1 Nov  6 14:21:30 JST 2025 x", "F[x] 1 2025/11/06 14:21"},
      {"-rw-r--r-- 1 a b 1 01-jun-99 x", "F[x] 1 1999/06/01 00:00"},
      {"-rw-r--r-- 1 a b 1 2024-01-31 23:59:59.123456789 +0900 x", "F[x] 1 2024/01/31 23:59"},
      {"-rw-r--r-- 1 a b 1 2024-01-31T23:59:59Z x", "F[x] 1 2024/01/31 23:59"},
      {"-rw-r--r-- 1 a b 1 06.11.2025 14:21 x", "F[x] 1 2025/11/06 14:21"},
      {"-rw-r--r-- 1 a b 1 2025-Nov-06 14:21 x", "F[x] 1 2025/11/06 14:21"},
      {"-rw-r--r-- 1 a b 1 2001 6月 18 x", "F[x] 1 2001/06/18 00:00"},
      {"-rw-r--r-- 1 1 1 2001 6月 18 14:21 x", "F[x] 2001 2025/06/18 14:21"},
      {"-rw-r--r-- 1 a b 1 11\x8C\x8E 6\x93\xFA 14\x8E\x9E"
       "21\x95\xAA x",
       "F[x] 1 2025/11/06 14:21"},
      {"-rw-r--r-- 1 a b 1 11\xB7\xEE 6\xC6\xFC 14\xBB\xFE"
       "21\xCA\xAC x",
       "F[x] 1 2025/11/06 14:21"},
      {"-rw-r--r-- 1 a b 1  1\x8C\x8E 6\x93\xFA 1996\x94N x", "F[x] 1 1996/01/06 00:00"},
      {"-rw-r--r-- 1 a b 1 11\xB7\xEE 6\xC6\xFC 1996\xC7\xAF x", "F[x] 1 1996/11/06 00:00"},
      {"-rw-r--r-- 1 a b 1 11月 6日 午後 2時21分 x", "F[x] 1 2025/11/06 14:21"},
      {"-rw-r--r-- 1 a b 1 11\x8C\x8E 6\x93\xFA \x8C\xDF\x91\x4F 12:21 x",
       "F[x] 1 2025/11/06 00:21"},
      {"-rw-r--r-- 1 a b 1 11\xB7\xEE 6\xC6\xFC \xB8\xE1\xB8\xE5 12:21 x",
       "F[x] 1 2025/11/06 12:21"},
      {"-rw-r--r-- 1 a b 1 令和 7年11月 6日 14:21 x", "F[x] 1 2025/11/06 14:21"},
      {"-rw-r--r-- 1 a b 1 1\x8C\x8E 7\x93\xFA \x8F\xBA\x98\x61 64\x94N x",
       "F[x] 1 1989/01/07 00:00"},
      {"-rw-r--r-- 1 a b 1 \xCA\xBF\xC0\xAE\xB8\xB5\xC7\xAF 11\xB7\xEE 6\xC6\xFC x",
       "F[x] 1 1989/11/06 00:00"},
      // Unix: dates that cannot be read
      {"-rw-r--r-- 1 a b 2000 26. Juli, 20:10 a b", "F[a b] 2000 1601/01/01 00:00"},
      {"drwxr-xr-x 1 a b 7 ??? ?? ????? x", "D[x] 7 1601/01/01 00:00"},
      {"-rw-r--r-- 1 a 7 Jan 01 24:00 x", "F[x] 7 1601/01/01 00:00"},
      {"drwxr-xr-x 1 a 7 13月32日 14:21 x", "D[x] 7 1601/01/01 00:00"},
      // MS-DOS, Windows NT and CE, OS/2
      {"01-31-24  02:30PM       <DIR>          sub dir", "D[sub dir] 0 2024/01/31 14:30"},
      {"01-31-99  12:05AM                 1234 a b.txt", "F[a b.txt] 1234 1999/01/31 00:05"},
      {"97-10-14  03:34p              1,234,567 x", "F[x] 1234567 1997/10/14 15:34"},
      {"1998/07/30 15:39:02    <DIR> x", "D[x] 0 1998/07/30 15:39"},
      {"2026/11/06  14:21    <JUNCTION>     x [C:\\y]", "D[x] 0 2026/11/06 14:21"},
      {"04/27/1999  09:09 PM    <SYMLINK>      x [y]", "F[x] 0 1999/04/27 21:09"},
      {"2002-09-02  19:06                9,730  x", "F[ x] 9730 2002/09/02 19:06"},
      {"36611      A    04-23-103  10:57  OS2 test", "F[OS2 test] 36611 2003/04/23 10:57"},
      {" 1123 DIR  A    10-05-100  23:38  x", "D[x] 1123 2000/10/05 23:38"},
      {"    0 DIR       02-11-103  16:15  x", "D[x] 0 2003/02/11 16:15"},
      // EPLF
      {"+i8388621.48594,m825718503,r,s280,\tdjb html", "F[djb html] 280 1996/03/01 22:15"},
      {"+i8388621.50690,m824255907,/,\t514", "D[514] 0 1996/02/13 23:58"},
  };
  for (const auto& [line, entry] : samples) {
    EXPECT_EQ(describe(parseListingLine(line, kNow)), entry) << line;
  }
}

TEST(FtpListing, ReadsEveryMixOfColumns) {
  const std::pair<const char*, const char*> dates[] = {
      {"Nov  6 14:21 ", "2025/11/06 14:21"},      {"Nov 06  2025 ", "2025/11/06 00:00"},
      {"6 Nov 14:21 ", "2025/11/06 14:21"},       {"2025-11-06 14:21 ", "2025/11/06 14:21"},
      {"11月 6日 14時21分 ", "2025/11/06 14:21"}, {"11月 6日 2025年 ", "2025/11/06 00:00"},
      {"11/ 6 14:21 ", "2025/11/06 14:21"},       {"Nov 6 14:21:30 2025 ", "2025/11/06 14:21"}};
  for (const std::string columns :
       {"1 root root ", "1 500 500 ", "1 2001 31 ", "1 u Domain Users ", "4 5 ", ""}) {
    for (const char* size : {"0", "1", "12", "31", "32", "1601", "2025", "123456"}) {
      for (const auto& [date, time] : dates) {
        for (const std::string name :
             {"x", "2025 a", "12:30 b", "6 Nov 2024 c", "a -> b", "1 2 3"}) {
          const std::string line = "-rw-r--r-- " + columns + size + " " + date + name;
          EXPECT_EQ(describe(parseListingLine(line, kNow)), "F[" + name + "] " + size + " " + time)
              << line;
        }
      }
    }
  }
}

TEST(FtpListing, TakesNothingElseForAnEntry) {
  const std::string lines[] = {"total 3",
                               "+",
                               "+r,\t",
                               "+r\tname",
                               "drwxr-xr-x is the mode of a folder, since Jan 01  2024 at least",
                               "-rw-r--r-- 1 a b x Jan 01  2024 x",
                               "-rw-r--r-- 1 a b 1 Jan 01  2024",
                               "-rw-r--r-- 1 a b 1 Jan 01  2024 /",
                               "-rw-r--r-- 1 a b 1 Jan 01  2024   ",
                               "-rw-r--r-- 1 a b 1 Jan 01  2024 a\x7F",
                               std::string("-rw-r--r-- 1 a b 1 Jan 01  2024 a\0b", 35),
                               "13-13-24  02:30PM       <DIR>          x",
                               "01-31-24  13:30PM       <DIR>          x",
                               "01-31-24  02:30PM       <dir>          x",
                               "01-31-24  02:30PM  the server went down",
                               "01-31-24  02:30PM       <DIR>",
                               "2024-01-31",
                               "12 users 01-31-24 02:30 x",
                               "0100644 of 500 is 1024 Nov 06 2025 x",
                               "1234567 4036 04/01/98 10:44:01 *DIR x/"};
  for (const std::string& line : lines) {
    EXPECT_EQ(describe(parseListingLine(line, kNow)), kNone) << line;
  }
}

TEST(FtpListing, NeverTakesProseForAnEntry) {
  std::mt19937 random(1);
  const auto upTo = [&](std::size_t count) { return random() % count; };
  // Words that no date and no mode can be made of.
  const std::vector<std::string> prose = {
      "the", "May",      "is",   "12", "a",     "at",   "files", "-",     "d",
      "->",  "1,234",    "本部", "of", "10:30", "2024", "read",  "total", "<DIR>",
      "[R]", "\x8C\x8E", "drw",  "\t", "Dr.",   "+r,",  "1601"};
  for (int i = 0; i < 20'000; ++i) {
    std::string line = "The";
    for (std::size_t n = upTo(14); n > 0; --n) line += " " + prose[upTo(prose.size())];
    ASSERT_EQ(describe(parseListingLine(line, kNow)), kNone) << line;
  }
}

/// The names of a reply that comes in blocks of that size, and whether it could be read.
std::string namesOf(const std::string& reply, std::size_t block) {
  FtpListing listing(kNow);
  for (std::size_t i = 0; i < reply.size(); i += block) listing.append(reply.substr(i, block));
  std::string names;
  while (const auto entry = listing.next()) names += entry->name + ",";
  return names + (listing.unreadable() ? "unreadable" : "");
}

TEST(FtpListing, ReadsAReplyInBlocksOfAnySize) {
  const std::string entry = "-rw-r--r-- 1 a b 1 Jan 01  2024 ";
  for (const std::size_t block : {1, 7, 4096}) {
    const std::string endless(10'000, 'x');
    EXPECT_EQ(namesOf("total 3\r\n" + entry + "one\r\n\r\n" + endless + "\nls: no\n" + entry +
                          "two\n" + entry + endless + "\r\n" + entry + "three",
                      block),
              "one,two,three,");
    EXPECT_EQ(namesOf("total 0\r\n\r\n\x8D\x87\x8C\x76 0", block), "");
    EXPECT_EQ(namesOf("total 1\r\nVMS.TXT;1  12-JAN-2001\r\n", block), "unreadable");
  }
}

TEST(FtpListing, TakesTimeInProportionToItsSize) {
  constexpr int kEntries = 50'000;
  std::string text(1'000'000, ' ');
  text.append("\r\n-rw-r--r-- 1 ").append(1'000'000, '1').append(1'000'000, '\n');
  for (int i = 0; i < kEntries; ++i) text += "-rw-r--r-- 1 a b 1 Jan 01  2024 x\r\n";
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(namesOf(text, 16'384).size(), 2U * kEntries);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds{20});
}

}  // namespace
}  // namespace karvel
