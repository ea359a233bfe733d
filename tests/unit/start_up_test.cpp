#include "shell/start_up.h"

#include <gtest/gtest.h>

#include "fakes/shop_world.h"

namespace karvel {
namespace {

class StartUpTest : public ::testing::Test, protected ShopWorld {};

TEST_F(StartUpTest, ASecondInstanceEndsWithoutATrace) {
  instance.free = false;
  setOwn("FTP EXIT", "1");
  files.files[path("old.txt")].content = "x";
  const std::string before = content(path("karvel.hnb"));
  EXPECT_EQ(start("-INIT"), StartOutcome::kEnded);
  EXPECT_EQ(content(path("karvel.hnb")), before);
  EXPECT_TRUE(files.exists(path("old.txt")));
  EXPECT_TRUE(desktop.messageBoxes.empty());
}

TEST_F(StartUpTest, TheFirstStartCreatesTheSettingsAndEnds) {
  files.files.erase(path("karvel.hnb"));
  EXPECT_EQ(start(), StartOutcome::kEnded);
  EXPECT_EQ(
      content(path("karvel.hnb")),
      "[FTP INFOMATION]\r\nFTP SEVE=\r\nFTP FOLD=\r\nFTP NAME=\r\nFTP PASS=\r\nFTP PORT=21\r\n"
      "FTP PSIV=1\r\nFTP CODE=\r\nFTP TIME=0\r\nHST FOLD=shop\r\nOUT FOLD=\r\nFTP TYPE=3\r\n"
      "FTP CHKC=0\r\nFTP CHKF=0\r\nGRUP CODE=9999\r\nGRUP NAME=るりはなリンク\r\n"
      "FTP EXIT=0\r\nFTP INIT=0\r\n");
  EXPECT_TRUE(desktop.messageBoxes.empty());
}

TEST_F(StartUpTest, WithoutTheTicketApplicationItSaysSoAndEnds) {
  files.files.erase(path("karvel.ini"));
  for (const char* name : {"Old.TXT", "karvel.hnb.unsaved", "karvel.ini.unsaved"}) {
    files.files[path(name)].content = "x";
  }
  setOwn("FTP EXIT", "1");
  setOwn("FTP INIT", "2");
  EXPECT_EQ(start("-INIT"), StartOutcome::kEnded);
  const FakeDesktop::MessageBox message{"集計管理", "発券システムの情報が見つかりません。　　\r\n"};
  EXPECT_EQ(desktop.messageBoxes, std::vector{message});
  EXPECT_EQ(own("FTP EXIT") + own("FTP INIT"), "00");
  EXPECT_EQ(files.files.size(), 1U) << "the settings alone stay";
  EXPECT_FALSE(form().visible());
  EXPECT_LT(clock.slept, std::chrono::seconds(1)) << "no pauses as of an orderly close";
}

// Which fields show which keys, and what follows from them, is the random user's.
TEST_F(StartUpTest, FillsThePanelFromBothFiles) {
  setOwn("FTP FOLD", "\" shop/ \"");
  setOwn("HST FOLD", "");
  ASSERT_EQ(start("-INIT"), StartOutcome::kPanel);
  EXPECT_EQ(form().text(FtpForm::Field::kSiteFolder), "shop/");
  EXPECT_EQ(form().text(FtpForm::Field::kShopName), "ソレイユ薬局");
  EXPECT_EQ(form().caption(), "ｸﾞﾙｰﾌﾟ:12/表町 店舗:00345/ソレイユ薬局");
  EXPECT_EQ(form().lstFiles.tabStops(), (std::vector{100, 100, 100}));
  EXPECT_EQ(own("HST FOLD"), "shop");
}

}  // namespace
}  // namespace karvel
