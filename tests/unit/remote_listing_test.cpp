#include "ftp/remote_listing.h"

#include <gtest/gtest.h>

#include <limits>

#include "fakes/ftp_rooms.h"

namespace karvel {
namespace {

using Lines = std::vector<std::string>;

constexpr std::uint64_t kMoment = 133497831599999999;  // 2024-01-15 09:05:59.9999999

Internet::FindData file(const std::string& name, std::uint64_t size = 0) {
  return {0, kMoment, static_cast<std::uint32_t>(size >> 32U), static_cast<std::uint32_t>(size),
          toCodePage932(name)};
}

Internet::FindData folder(const std::string& name) {
  return {Internet::FindData::kDirectory, kMoment, 0, 0, toCodePage932(name)};
}

class RemoteListingTest : public ::testing::Test, protected FtpRooms {
 protected:
  RemoteListingTest() { session.clsFtp->OpenSession(); }

  Lines refreshed(const std::vector<Internet::FindData>& entries) {
    internet.extraEntries = entries;
    listing.Ftp_ListFiles();
    return form.lstFiles.items();
  }
};

TEST_F(RemoteListingTest, ShowsFoldersAndFilesInTheServersOrder) {
  EXPECT_EQ(refreshed({}), (Lines{". "}));
  EXPECT_EQ(
      refreshed({file("表.csv", 1234567), folder(".."), folder("表"), file("a"), file("b", 999),
                 file("c", 1000), file("d", 5000000000)}),
      (Lines{". ", "F 表.csv\t1,234,567\t2024/01/15 09:05", "D ..\t \t2024/01/15 09:05",
             "D 表\t \t2024/01/15 09:05", "F a\t0\t2024/01/15 09:05", "F b\t999\t2024/01/15 09:05",
             "F c\t1,000\t2024/01/15 09:05", "F d\t5,000,000,000\t2024/01/15 09:05"}));
}

TEST_F(RemoteListingTest, HeadsEveryFolderButTheRootWithTwoStops) {
  internet.folders["/sub"] = {};
  session.clsFtp->CurDir("sub");
  EXPECT_EQ(refreshed({}), (Lines{".."}));
  refuse("pwd", {12002});
  EXPECT_EQ(refreshed({}), (Lines{".."})) << "a folder that cannot be told is not the root";
}

TEST_F(RemoteListingTest, FindsWhatTheLastRefreshSaw) {
  refreshed({folder("a"), file("b"), file("a", 7)});
  EXPECT_EQ(listing.findFolder("D a\t"), 0U);
  EXPECT_EQ(listing.findFile("F a\t"), 1U);
  EXPECT_EQ(listing.fileSize(1), 7);
  EXPECT_EQ(listing.findFolder("D b"), std::nullopt);
  refreshed({});
  EXPECT_EQ(listing.findFolder("D a\t"), std::nullopt);
  EXPECT_EQ(listing.findFile("F a\t"), std::nullopt);
}

TEST_F(RemoteListingTest, KeepsSizesWithinTheirSlots) {
  constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
  const auto lines =
      refreshed({file("a", 2147483647), file("b", 2147483648), file("c", 1ULL << 40U),
                 file("d", std::numeric_limits<std::uint64_t>::max())});
  for (const std::size_t slot : {0U, 1U, 2U, 3U}) EXPECT_EQ(listing.fileSize(slot), kLargest);
  EXPECT_EQ(lines[2], "F b\t2,147,483,648\t2024/01/15 09:05");
  EXPECT_EQ(lines[4], "F d\t18,446,744,073,709,551,616\t2024/01/15 09:05");
}

TEST_F(RemoteListingTest, CutsSlotsAfter128Characters) {
  for (const std::string character : {"x", "あ"}) {
    std::string name;
    for (int i = 0; i < 125; ++i) name += character;
    const std::string whole = "F " + name + "\t";
    const std::string cut = "F " + name + character + "\t";
    const auto lines = refreshed({file(name), file(name + character)});
    EXPECT_EQ(listing.findFile(whole), 0U);
    EXPECT_EQ(listing.findFile(cut), std::nullopt) << "only 128 characters fit";
    EXPECT_EQ(listing.findFile(cut.substr(0, cut.size() - 1)), 1U);
    EXPECT_EQ(lines[2], cut + "0\t2024/01/15 09:05") << "shown whole";
  }
}

TEST_F(RemoteListingTest, ShowsMoreEntriesThanItKeeps) {
  std::vector<Internet::FindData> entries;
  for (int i = 0; i < 10002; ++i) {
    entries.push_back(file("f" + std::to_string(i)));
    entries.push_back(folder("d" + std::to_string(i)));
  }
  EXPECT_EQ(refreshed(entries).size(), 20005U);
  EXPECT_EQ(listing.findFile("F f10000\t"), 10000U);
  EXPECT_EQ(listing.findFolder("D d10000\t"), 10000U);
  EXPECT_EQ(listing.findFile("F f10001\t"), std::nullopt);
  EXPECT_EQ(listing.findFolder("D d10001\t"), std::nullopt);
}

TEST_F(RemoteListingTest, KeepsWhatItHasReadWhenTheEnumerationFails) {
  refuse("next", {12031});
  EXPECT_EQ(refreshed({file("a"), file("b")}).size(), 2U);
  EXPECT_EQ(listing.findFile("F a\t"), 0U);
  EXPECT_EQ(listing.findFile("F b\t"), std::nullopt);
  EXPECT_TRUE(form.LastFtpError.starts_with("12031/"));

  refuse("list", {12002});
  EXPECT_EQ(refreshed({file("a")}), (Lines{". "}));
  EXPECT_EQ(listing.findFile("F a\t"), std::nullopt);
}

}  // namespace
}  // namespace karvel
