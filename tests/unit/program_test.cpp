#include "app/program.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "unit/random_user.h"

namespace karvel {
namespace {

using namespace std::chrono_literals;
using Command = FtpForm::Command;
using Field = FtpForm::Field;
using MessageBox = FakeDesktop::MessageBox;

class RandomUsers : public ::testing::TestWithParam<unsigned> {};

TEST_P(RandomUsers, FindTheProgramAsTheModelHasIt) {
  std::mt19937 random(GetParam());
  RandomUser([&random] { return static_cast<unsigned>(random()); }).live(1000);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomUsers, ::testing::Range(1U, 9U));

/// What the random user cannot do or see, or nobody would look for there.
class ProgramTest : public ::testing::Test, protected ShopWorld {};

TEST_F(ProgramTest, ASecondInstanceEndsWithoutATrace) {
  instance.free = false;
  setOwn("FTP EXIT", "1");
  files.files[path("old.txt")].content = "x";
  const std::string before = content(path("karvel.hnb"));
  EXPECT_EQ(start("-INIT"), StartOutcome::kEnded);
  EXPECT_EQ(content(path("karvel.hnb")), before);
  EXPECT_TRUE(files.exists(path("old.txt")));
  EXPECT_TRUE(desktop.messageBoxes.empty());
}

TEST_F(ProgramTest, TheFirstStartCreatesTheSettingsAndEnds) {
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

TEST_F(ProgramTest, WithoutTheTicketApplicationItSaysSoAndEnds) {
  files.files.erase(path("karvel.ini"));
  for (const char* name : {"Old.TXT", "karvel.hnb.unsaved", "karvel.ini.unsaved"}) {
    files.files[path(name)].content = "x";
  }
  setOwn("FTP EXIT", "1");
  setOwn("FTP INIT", "2");
  EXPECT_EQ(start("-INIT"), StartOutcome::kEnded);
  const MessageBox message{"集計管理", "発券システムの情報が見つかりません。　　\r\n"};
  EXPECT_EQ(desktop.messageBoxes, std::vector{message});
  EXPECT_EQ(own("FTP EXIT") + own("FTP INIT"), "00");
  EXPECT_EQ(files.files.size(), 1U) << "the settings alone stay";
  EXPECT_FALSE(form().visible());
  EXPECT_LT(clock.slept, 1s) << "no pauses as of an orderly close";
}

TEST_F(ProgramTest, FillsThePanelFromBothFiles) {
  setOwn("FTP FOLD", "\" shop/ \"");
  setOwn("HST FOLD", "");
  ASSERT_EQ(start("-INIT"), StartOutcome::kPanel);
  EXPECT_EQ(form().text(Field::kSiteFolder), "shop/");
  EXPECT_EQ(form().caption(), "ｸﾞﾙｰﾌﾟ:12/表町 店舗:00345/ソレイユ薬局");
  EXPECT_EQ(form().lstFiles.tabStops(), (std::vector{100, 100, 100}));
  EXPECT_EQ(own("HST FOLD"), kFolder);
}

TEST_F(ProgramTest, TheGroupDialogSettlesTheTicketApplicationsFolderEvenWhenCancelled) {
  start("-INIT");
  setOwn("HST FOLD", "");
  form().Command1[Command::kGroup].click();
  EXPECT_EQ(own("HST FOLD"), kFolder);

  files.folders.insert("elsewhere");
  setOwn("HST FOLD", "elsewhere");
  desktop.onModal = [](Form& dialog) {
    dialog.control("Text1", Field::kShopName).setText("elsewhere");
    dialog.control("Command1", GrpForm::Command::kRegister).click();
  };
  form().Command1[Command::kGroup].click();
  EXPECT_FALSE(content(joinPath("elsewhere", "karvel.ini")).empty()) << "where the folder is now";
  EXPECT_EQ(form().text(Field::kShopName), "ソレイユ薬局") << "is not handed back";
}

TEST_F(ProgramTest, RefusesToRunWithoutAShopCode) {
  start("-INIT");
  form().Text1[Field::kShopCode].setText("0");
  form().SndNG = true;
  for (const auto command : {Command::kSend, Command::kTest}) {
    form().Command1[command].setEnabled(true);  // as if it had been pressed just before
    form().Command1[command].click();
    EXPECT_TRUE(form().Command1[command].enabled());
    EXPECT_TRUE(form().SndNG);
  }
  const MessageBox box{form().caption(), "店舗コードが不明です。　　"};
  EXPECT_EQ(desktop.messageBoxes, (std::vector{box, box}));
  EXPECT_EQ(content(logPath()), "");
}

TEST_F(ProgramTest, LowersTheCounterNoFurtherThanItsTypeGoes) {
  start("-INIT");
  files.folders.erase(kOutFolder);
  for (int i = 0; i < 300; ++i) form().Command1[Command::kTest].click();
  EXPECT_EQ(form().TimerCount, std::numeric_limits<std::int16_t>::min());
}

TEST_F(ProgramTest, EndsAfterTwoPausesWithoutItsWorkFiles) {
  const std::string kept[] = {path("a.csv"), joinPath(path("temp"), "b.txt"), outPath("c.txt")};
  for (const std::string& file : kept) files.files[file] = {};
  for (const bool resident : {false, true}) {
    start(resident ? "" : "-INIT");
    files.files[path("B.TXT")] = {};
    std::vector<std::chrono::milliseconds> pauses;
    desktop.onPending = [&, before = clock.slept] {
      pauses.push_back(clock.slept - before);
      EXPECT_EQ(form().visible(), pauses.back() == 0s) << "for a moment, when it comes back";
      EXPECT_TRUE(files.exists(path("B.TXT")));
      form().close();
    };
    form().close();
    desktop.onPending = nullptr;
    if (resident) pauses.erase(pauses.begin());
    EXPECT_EQ(pauses, (std::vector<std::chrono::milliseconds>{1s, 2s}));
    EXPECT_FALSE(files.exists(path("B.TXT")));
    for (const std::string& file : kept) EXPECT_TRUE(files.exists(file)) << file;
  }
}

}  // namespace
}  // namespace karvel
