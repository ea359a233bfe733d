#include "shell/start_up.h"

#include <gtest/gtest.h>

#include "fakes/shop_world.h"

namespace karvel {
namespace {

using Destination = FtpForm::Destination;

int selectedIndex(const ControlArray& options) {
  for (const Control* option : options.all()) {
    if (option->selected()) return option->row().index;
  }
  return -1;
}

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
  files.files[path("Old.TXT")].content = "x";
  setOwn("FTP EXIT", "1");
  setOwn("FTP INIT", "2");
  EXPECT_EQ(start("-INIT"), StartOutcome::kEnded);
  const FakeDesktop::MessageBox message{"集計管理", "発券システムの情報が見つかりません。　　\r\n"};
  EXPECT_EQ(desktop.messageBoxes, std::vector{message});
  EXPECT_EQ(own("FTP EXIT") + own("FTP INIT"), "00");
  EXPECT_FALSE(files.exists(path("Old.TXT")));
  EXPECT_FALSE(form().visible());
}

TEST_F(StartUpTest, FillsThePanelFromBothFiles) {
  useOwnSite();
  setOwn("FTP FOLD", "\" shop/ \"");
  setOwn("HST FOLD", "");
  const std::pair<const char*, int> passive[] = {{"0", 0}, {"x", 0}, {"2", 1}};
  for (const auto& [stored, shown] : passive) {
    setOwn("FTP PSIV", stored);
    ASSERT_EQ(start("-INIT"), StartOutcome::kPanel);
    EXPECT_EQ(form().chkPassive.value(), shown) << stored;
  }
  const char* texts[] = {"ftp.example.com", "shop/",        "shop", "secret", "21",
                         "00345",           "ソレイユ薬局", "out",  "12",     "表町"};
  for (int field = 0; field < 10; ++field) EXPECT_EQ(form().Text1[field].text(), texts[field]);
  EXPECT_EQ(form().caption(), "ｸﾞﾙｰﾌﾟ:12/表町 店舗:00345/ソレイユ薬局");
  EXPECT_EQ(form().lstFiles.tabStops(), (std::vector{100, 100, 100}));
  EXPECT_EQ(own("HST FOLD"), "shop");
  EXPECT_TRUE(form().Command4.enabled()) << "the destination's own controls follow its selection";
}

TEST_F(StartUpTest, SelectsDestinationAndInterval) {
  const struct {
    std::string type;
    std::string domain;
    int destination;
  } destinations[] = {
      {"0", "", 0}, {"1", "", 1}, {"2", "shop.example", 2}, {"2", "", 3},  {"3", "", 3},
      {"", "", 0},  {"7", "", 3}, {"abc", "", 0},           {"-1", "", 3}, {"1.5", "", 3}};
  for (const auto& c : destinations) {
    setOwn("FTP TYPE", c.type);
    setTicket("FTP INFOMATION", "DOMAIN", c.domain);
    start("-INIT");
    EXPECT_EQ(selectedIndex(form().Option2), c.destination) << c.type << "/" << c.domain;
    EXPECT_EQ(form().Option2[Destination::kServiceSite].enabled(), !c.domain.empty());
  }

  const struct {
    std::string time;
    int interval;
    int timerCount;
  } intervals[] = {{"0", 0, 0},    {"1", 1, 60}, {"2", 2, 360}, {"3", 3, 810},
                   {"4", 4, 1710}, {"7", 0, 0},  {"", 0, 0}};
  for (const auto& c : intervals) {
    setOwn("FTP TIME", c.time);
    start("-INIT");
    EXPECT_EQ(selectedIndex(form().Option1), c.interval) << c.time;
    EXPECT_EQ(form().TimerCount, c.timerCount) << c.time;
  }
}

// The rule of the destination itself is the panel's.
TEST_F(StartUpTest, ShowsThePanelGoesResidentOrEnds) {
  const struct {
    std::string commandLine;
    std::string confirmed;
    StartOutcome outcome;
  } cases[] = {
      {"", "1", StartOutcome::kResident},        {"", "0", StartOutcome::kEnded},
      {"-init", "1", StartOutcome::kResident},   {"-INIT", "0", StartOutcome::kPanel},
      {"-INIT x", "1", StartOutcome::kResident}, {"-GRUP", "1", StartOutcome::kEnded},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.commandLine + c.confirmed);
    setOwn("FTP CHKC", c.confirmed);
    desktop.tray.reset();
    desktop.modals.clear();
    EXPECT_EQ(start(c.commandLine), c.outcome);
    const bool resident = c.outcome == StartOutcome::kResident;
    EXPECT_EQ(desktop.timer->enabled(), resident);
    EXPECT_EQ(desktop.tray.has_value(), resident);
    EXPECT_EQ(form().visible(), c.outcome == StartOutcome::kPanel);
    EXPECT_EQ(desktop.modals.size(), c.commandLine == "-GRUP" ? 1U : 0U);
    EXPECT_LT(clock.slept, std::chrono::seconds(1)) << "no pauses as of an orderly close";
    clock.slept = {};
  }
  EXPECT_TRUE(logMessages().empty());
}

}  // namespace
}  // namespace karvel
