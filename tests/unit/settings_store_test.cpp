#include "store/settings_store.h"

#include <gtest/gtest.h>

#include "fakes/fake_clock.h"
#include "fakes/fake_files.h"
#include "fakes/fake_profile.h"
#include "store/run_log.h"
#include "text/path.h"

namespace karvel {
namespace {

using std::chrono::milliseconds;
using std::string_literals::operator""s;

class SettingsStoreTest : public ::testing::Test {
 protected:
  SettingsStoreTest() {
    files.folders.insert("shop");
    store.OwnIniPath = kFile;
  }
  void put(const std::string& lines) { files.files[kFile].content = kSection + lines; }

  const std::string kFile = joinPath("shop", "karvel.hnb");
  const std::string kSection = "[FTP INFOMATION]\r\n";
  FakeFiles files;
  FakeClock clock;
  FakeProfile profile{files};
  IniRedWrt store{profile, files, clock};
};

TEST_F(SettingsStoreTest, AsksOnceMoreForAnEmptyAnswer) {
  put("FTP EXIT=\r\nFTP TIME=1\r\n");
  EXPECT_EQ(store.read(OwnKey{"FTP TIME"}), "1");
  EXPECT_EQ(clock.slept, milliseconds(0));
  EXPECT_EQ(store.read(OwnKey{"FTP EXIT"}), "");
  EXPECT_EQ(clock.slept, milliseconds(100));
  EXPECT_EQ(store.ReadIni("FTP INFOMATION", "FTP TIME", joinPath("shop", "none")), "");
  clock.onSleep = [&] { put("FTP EXIT=1\r\n"); };
  EXPECT_EQ(store.read(OwnKey{"FTP EXIT"}), "1") << "another program was writing the file";
}

TEST_F(SettingsStoreTest, CutsAValueAfter255BytesAndAtACharacter) {
  put("A=" + std::string(300, 'x') + "\r\n");
  EXPECT_EQ(store.read(OwnKey{"A"}), std::string(255, 'x'));
  std::string japanese;
  for (int i = 0; i < 150; ++i) japanese += "表";
  ASSERT_TRUE(store.write(OwnKey{"C"}, japanese));
  EXPECT_EQ(store.read(OwnKey{"C"}), japanese.substr(0, 127 * std::string("表").size()));
}

TEST_F(SettingsStoreTest, ReadsBackWhatItWrote) {
  for (const std::string value :
       {"表示ソ能", "\"quoted\"", "'single'", "\"\"", "a=b;c", "\"", "C:\\表\\ソ"}) {
    ASSERT_TRUE(store.write(OwnKey{"GRUP NAME"}, value));
    EXPECT_EQ(store.read(OwnKey{"GRUP NAME"}), value);
  }
  ASSERT_TRUE(store.write(OwnKey{"GRUP NAME"}, "a\r\nFTP EXIT=1\n"));
  EXPECT_EQ(store.read(OwnKey{"GRUP NAME"}), "aFTP EXIT=1") << "a value stays in its line";
  put("A=x\0y\r\n"s);
  EXPECT_EQ(store.read(OwnKey{"A"}), "xy");
}

TEST_F(SettingsStoreTest, MakesAReadOnlyFileNormalForTheSecondAttempt) {
  put("FTP TIME=1\r\n");
  files.files[kFile].readOnly = true;
  EXPECT_TRUE(store.write(OwnKey{"FTP TIME"}, "2"));
  EXPECT_EQ(clock.slept, milliseconds(100));
  EXPECT_FALSE(files.files[kFile].readOnly);
  EXPECT_EQ(store.read(OwnKey{"FTP TIME"}), "2");
  EXPECT_FALSE(store.WriteIni("S", "K", "V", joinPath("nowhere", "karvel.hnb")));
}

TEST_F(SettingsStoreTest, LeavesAFileAloneThatHoldsTheValue) {
  put("A=x\r\nFTP TIME=\"1\"\r\n");
  EXPECT_TRUE(store.write(OwnKey{"A"}, "x"));
  EXPECT_TRUE(store.write(own::kInterval, "1"));
  EXPECT_EQ(files.written.size(), 0U);
  EXPECT_TRUE(store.write(OwnKey{"B"}, ""));
  EXPECT_EQ(files.written.size(), 1U) << "an empty value and a missing one read alike";
  EXPECT_EQ(clock.slept, milliseconds(0));

  files.files[kFile].readOnly = true;
  EXPECT_TRUE(store.write(OwnKey{"A"}, "x"));
  EXPECT_FALSE(files.files[kFile].readOnly);
}

TEST_F(SettingsStoreTest, FindsTheProgramsOwnFolderWhateverItIsCalled) {
  for (const char* start : {"first", "next"}) {
    store.locateTicketIni("caf\u00E9");
    EXPECT_EQ(store.TicketIniPath, joinPath("caf\u00E9", "karvel.ini")) << start;
  }
  store.write(OwnKey{"HST FOLD"}, "表");
  store.locateTicketIni("caf\u00E9");
  EXPECT_EQ(store.TicketIniPath, joinPath("表", "karvel.ini"));
}

TEST_F(SettingsStoreTest, TheRunLogAppendsDatedLinesWhereItsFolderIs) {
  const std::string folder = joinPath("shop", "Log");
  RunLog log(files, clock, "shop");
  log.WriteLog("lost");
  EXPECT_EQ(files.files.size(), 0U) << "without the folder nothing is logged, and none is made";

  files.folders.insert(folder);
  log.WriteLog("開始");
  clock.time = {2024, 1, 15, 23, 59, 59};
  log.WriteLog("b");
  clock.time = {2024, 1, 16, 0, 0, 0};
  log.WriteLog("c\r\nd\x1B\x7F表");
  EXPECT_EQ(files.files[joinPath(folder, "240115.log")].content,
            "2024/01/15 09:05:07\t\x8A\x4A\x8E\x6E\r\n2024/01/15 23:59:59\tb\r\n");
  EXPECT_EQ(files.files[joinPath(folder, "240116.log")].content,
            "2024/01/16 00:00:00\tc  d  \x95\x5C\r\n");
}

}  // namespace
}  // namespace karvel
