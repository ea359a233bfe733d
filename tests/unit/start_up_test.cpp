#include "shell/start_up.h"

#include <gtest/gtest.h>

#include "fakes/shop_world.h"

namespace karvel {
namespace {

using Field = FtpForm::Field;
using Destination = FtpForm::Destination;
using std::chrono::milliseconds;

int selectedIndex(const ControlArray& options) {
  for (const Control* option : options.all()) {
    if (option->selected()) return option->row().index;
  }
  return -1;
}

TEST(StartUp, ASecondInstanceEndsWithoutATrace) {
  ShopWorld shop;
  shop.instance.free = false;
  shop.setOwn("FTP EXIT", "1");
  shop.files.files[ShopWorld::path("old.txt")].content = "x";
  const auto before = shop.content(ShopWorld::path("karvel.hnb"));
  EXPECT_EQ(shop.start("-INIT"), StartOutcome::kEnded);
  EXPECT_EQ(shop.content(ShopWorld::path("karvel.hnb")), before);
  EXPECT_TRUE(shop.files.exists(ShopWorld::path("old.txt")));
  EXPECT_TRUE(shop.desktop.messageBoxes.empty());
  EXPECT_TRUE(shop.logMessages().empty());
}

TEST(StartUp, TheFirstStartCreatesTheSettingsAndEnds) {
  ShopWorld shop;
  shop.files.files.erase(ShopWorld::path("karvel.hnb"));
  EXPECT_EQ(shop.start(), StartOutcome::kEnded);
  EXPECT_EQ(
      shop.content(ShopWorld::path("karvel.hnb")),
      "[FTP INFOMATION]\r\nFTP SEVE=\r\nFTP FOLD=\r\nFTP NAME=\r\nFTP PASS=\r\nFTP PORT=21\r\n"
      "FTP PSIV=1\r\nFTP CODE=\r\nFTP TIME=0\r\nHST FOLD=shop\r\nOUT FOLD=\r\nFTP TYPE=3\r\n"
      "FTP CHKC=0\r\nFTP CHKF=0\r\nGRUP CODE=9999\r\nGRUP NAME=るりはなリンク\r\n"
      "FTP EXIT=0\r\nFTP INIT=0\r\n");
  EXPECT_TRUE(shop.desktop.messageBoxes.empty());
}

TEST(StartUp, WithoutTheTicketApplicationItSaysSoAndEnds) {
  ShopWorld shop;
  shop.files.files.erase(ShopWorld::path("karvel.ini"));
  shop.files.files[ShopWorld::path("Old.TXT")].content = "x";
  shop.setOwn("FTP EXIT", "1");
  shop.setOwn("FTP INIT", "2");
  EXPECT_EQ(shop.start("-INIT"), StartOutcome::kEnded);
  const FakeDesktop::MessageBox message{"集計管理", "発券システムの情報が見つかりません。　　\r\n"};
  EXPECT_EQ(shop.desktop.messageBoxes, std::vector{message});
  EXPECT_EQ(shop.own("FTP EXIT"), "0");
  EXPECT_EQ(shop.own("FTP INIT"), "0");
  EXPECT_FALSE(shop.files.exists(ShopWorld::path("Old.TXT")));
  EXPECT_FALSE(shop.form().visible());
}

TEST(StartUp, FillsThePanelFromBothFiles) {
  ShopWorld shop;
  shop.useOwnSite();
  shop.setOwn("FTP FOLD", "\" shop/ \"");
  shop.setOwn("FTP PSIV", "0");
  shop.setOwn("HST FOLD", "");
  ASSERT_EQ(shop.start("-INIT"), StartOutcome::kPanel);

  const FtpForm& form = shop.form();
  const char* texts[] = {"ftp.example.com", "shop/",        "shop", "secret", "21",
                         "00345",           "ソレイユ薬局", "out",  "12",     "表町"};
  for (int field = 0; field < 10; ++field) EXPECT_EQ(form.Text1[field].text(), texts[field]);
  EXPECT_EQ(form.chkPassive.value(), 0);
  EXPECT_EQ(form.caption(), "ｸﾞﾙｰﾌﾟ:12/表町 店舗:00345/ソレイユ薬局");
  EXPECT_EQ(form.lstFiles.tabStops(), (std::vector{100, 100, 100}));
  EXPECT_EQ(shop.own("HST FOLD"), "shop");
  EXPECT_TRUE(form.visible());
  EXPECT_FALSE(form.Timer1->enabled());
  EXPECT_FALSE(shop.desktop.tray);
  EXPECT_TRUE(form.Command4.enabled()) << "the destination's own controls follow its selection";
}

TEST(StartUp, SelectsDestinationAndInterval) {
  const struct {
    std::string type;
    std::string domain;
    int destination;
  } destinations[] = {
      {"0", "", 0},   {"1", "", 1}, {"2", "shop.example", 2}, {"2", "", 3},  {"3", "", 3},
      {"", "", 0},    {"7", "", 3}, {"abc", "", 0},           {"-1", "", 3}, {"1.5", "", 3},
      {" 1 ", "", 1},
  };
  for (const auto& c : destinations) {
    ShopWorld shop;
    shop.setOwn("FTP TYPE", c.type);
    shop.setTicket("FTP INFOMATION", "DOMAIN", c.domain);
    static_cast<void>(shop.start("-INIT"));
    EXPECT_EQ(selectedIndex(shop.form().Option2), c.destination) << c.type << "/" << c.domain;
    EXPECT_EQ(shop.form().Option2[Destination::kServiceSite].enabled(), !c.domain.empty());
  }

  const struct {
    std::string time;
    int interval;
    int timerCount;
  } intervals[] = {{"0", 0, 0}, {"1", 1, 60}, {"2", 2, 360}, {"3", 3, 810}, {"4", 4, 1710},
                   {"7", 0, 0}, {"", 0, 0},   {"-1", 0, 0},  {"x", 0, 0}};
  for (const auto& c : intervals) {
    ShopWorld shop;
    shop.setOwn("FTP TIME", c.time);
    static_cast<void>(shop.start("-INIT"));
    EXPECT_EQ(selectedIndex(shop.form().Option1), c.interval) << c.time;
    EXPECT_EQ(shop.form().TimerCount, c.timerCount) << c.time;
  }
}

TEST(StartUp, StaysResidentOnlyWithAConfirmedDestination) {
  const struct {
    std::string commandLine;
    std::string type;
    std::string shopCode;
    std::string checkedFolder;
    std::string checkedSite;
    std::string domain;
    StartOutcome outcome;
  } cases[] = {
      {"", "0", "00345", "1", "0", "", StartOutcome::kResident},
      {"-init", "0", "00345", "1", "0", "", StartOutcome::kResident},
      {"-INIT x", "0", "00345", "1", "0", "", StartOutcome::kResident},
      {"", "0", "00345", "0", "1", "d", StartOutcome::kEnded},
      {"", "0", "00345", "2", "1", "d", StartOutcome::kEnded},
      {"", "0", "00000", "1", "1", "d", StartOutcome::kEnded},
      {"", "0", "", "1", "1", "d", StartOutcome::kEnded},
      {"", "1", "00345", "0", "1", "", StartOutcome::kResident},
      {"", "1", "00345", "1", "0", "d", StartOutcome::kEnded},
      {"", "2", "00345", "0", "0", "d", StartOutcome::kResident},
      {"", "2", "00345", "1", "1", "", StartOutcome::kEnded},
      {"", "3", "00345", "1", "1", "d", StartOutcome::kEnded},
      {"-INIT", "3", "", "0", "0", "", StartOutcome::kPanel},
  };
  for (const auto& c : cases) {
    ShopWorld shop;
    shop.setOwn("FTP TYPE", c.type);
    shop.setOwn("FTP CODE", c.shopCode);
    shop.setOwn("FTP CHKC", c.checkedFolder);
    shop.setOwn("FTP CHKF", c.checkedSite);
    shop.setTicket("FTP INFOMATION", "DOMAIN", c.domain);
    EXPECT_EQ(shop.start(c.commandLine), c.outcome) << c.commandLine << c.type << c.shopCode;
    const bool resident = c.outcome == StartOutcome::kResident;
    EXPECT_EQ(shop.form().Timer1->enabled(), resident);
    EXPECT_EQ(shop.desktop.tray.has_value(), resident);
    EXPECT_EQ(shop.form().visible(), c.outcome == StartOutcome::kPanel);
    EXPECT_TRUE(shop.logMessages().empty());
  }
}

TEST(StartUp, TheGroupDialogAloneEndsTheProgram) {
  ShopWorld shop;
  EXPECT_EQ(shop.start("-GRUP"), StartOutcome::kEnded);
  EXPECT_EQ(shop.desktop.modals, std::vector<std::string>{"GrpForm"});
  EXPECT_FALSE(shop.form().visible());
  EXPECT_EQ(shop.clock.slept % milliseconds(1000), shop.clock.slept)
      << "the end is at once, without the pauses of an orderly close";
}

}  // namespace
}  // namespace karvel
