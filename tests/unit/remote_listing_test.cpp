#include "ftp/remote_listing.h"

#include <gtest/gtest.h>

#include <limits>

#include "fakes/ftp_rooms.h"

namespace karvel {
namespace {

using Lines = std::vector<std::string>;
using Entry = Internet::FindData;

constexpr DateTime kMoment{2024, 1, 15, 9, 5, 59};
const std::string kDate = "\t2024/01/15 09:05";

Entry file(const std::string& name, std::uint64_t size = 0) {
  return {toCodePage932(name), false, size, kMoment};
}

Entry folder(const std::string& name) {
  return {toCodePage932(name), true, 0, kMoment};
}

class RemoteListingTest : public ::testing::Test, protected FtpRooms {
 protected:
  RemoteListingTest() { clsFtp.OpenSession(); }

  Lines refreshed(const std::vector<Entry>& entries) {
    internet.extraEntries = entries;
    listing.Ftp_ListFiles();
    return form.lstFiles.items();
  }
};

TEST_F(RemoteListingTest, ShowsFoldersAndFilesInTheServersOrder) {
  EXPECT_EQ(refreshed({file("表.csv", 1234567), folder(".."), folder("表"), file("a"),
                       file("b", 999), file("c", 1000), file("d", 5000000000)}),
            (Lines{". ", "F 表.csv\t1,234,567" + kDate, "D ..\t " + kDate, "D 表\t " + kDate,
                   "F a\t0" + kDate, "F b\t999" + kDate, "F c\t1,000" + kDate,
                   "F d\t5,000,000,000" + kDate}));
}

TEST_F(RemoteListingTest, HeadsEveryFolderButTheRootWithTwoStops) {
  EXPECT_EQ(refreshed({}), (Lines{". "}));
  internet.folders["/sub"] = {};
  clsFtp.CurDir("sub");
  EXPECT_EQ(refreshed({}), (Lines{".."}));
  refuse("pwd", {12002});
  EXPECT_EQ(refreshed({}), (Lines{".."})) << "a folder that cannot be told is not the root";
}

TEST_F(RemoteListingTest, FindsWhatTheLastRefreshSaw) {
  constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
  refreshed({folder("a"), file("b", 2147483648), file("a", 7)});
  EXPECT_EQ(listing.findFolder("D a\t"), 0U);
  EXPECT_EQ(listing.findFile("F a\t"), 1U);
  EXPECT_EQ(listing.fileSize(1), 7);
  EXPECT_EQ(listing.fileSize(0), kLargest) << "a slot holds no more";
  EXPECT_EQ(listing.findFolder("D b"), std::nullopt);
  refreshed({file("c", 5)});
  EXPECT_EQ(listing.fileSize(0), 5);
  EXPECT_EQ(listing.findFolder("D a\t"), std::nullopt);
  EXPECT_EQ(listing.findFile("F a\t"), std::nullopt);
}

TEST_F(RemoteListingTest, CutsSlotsAfter128Characters) {
  for (const std::string character : {"x", "あ"}) {
    std::string name;
    for (int i = 0; i < 125; ++i) name += character;
    const std::string cut = "F " + name + character;
    const auto lines = refreshed({file(name), file(name + character)});
    EXPECT_EQ(listing.findFile("F " + name + "\t"), 0U);
    EXPECT_EQ(listing.findFile(cut), 1U);
    EXPECT_EQ(listing.findFile(cut + "\t"), std::nullopt);
    EXPECT_EQ(lines[2], cut + "\t0" + kDate) << "shown whole";
  }
}

TEST_F(RemoteListingTest, ShowsMoreEntriesThanItKeeps) {
  std::vector<Entry> entries;
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
  EXPECT_TRUE(form.LastFtpError.starts_with("12031/"));
  refuse("list", {12002});
  EXPECT_EQ(refreshed({file("a")}), (Lines{". "}));
}

}  // namespace
}  // namespace karvel
