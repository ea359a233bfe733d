#include <gtest/gtest.h>

#include "fakes/shop_world.h"

namespace karvel {
namespace {

using Field = FtpForm::Field;
using Destination = FtpForm::Destination;
using Command = FtpForm::Command;

class Panel : public ::testing::Test, protected ShopWorld {
 protected:
  void open() { ASSERT_EQ(start("-INIT"), StartOutcome::kPanel); }
  void click(Command::Index command) { form().Command1[command].click(); }
  bool enabled(Command::Index command) { return form().Command1[command].enabled(); }
  /// The states of the buttons in the order of their indexes, then of the tray menu's send entry.
  std::string commands() {
    std::string states;
    for (int i = Command::kCancel; i <= Command::kGroup; ++i) {
      states += form().Command1[i].enabled() ? '1' : '0';
    }
    return states + (form().MyMenu_Send.enabled ? "/1" : "/0");
  }
  bool endedBy(Command::Index command) {
    desktop.hasQuit = false;
    click(command);
    return desktop.hasQuit;
  }
};

TEST_F(Panel, OffersTestSendAndResidenceByShopCodeDestinationAndProof) {
  const struct {
    int destination;
    std::string shopCode;
    std::string folder;
    std::string password;
    std::string folderFlag;
    std::string siteFlag;
    std::string domain;
    bool test;
    bool send;
  } cases[] = {
      {0, "00345", "out", "p", "1x", "0", "", true, true},
      {0, "00345", "out", "p", "0", "1", "d", true, false},
      {0, "00345", "out", "p", "2", "1", "d", true, false},
      {0, "00345", "", "", "1", "0", "", false, true},
      {0, "", "out", "p", "1", "1", "d", false, false},
      {0, "00000", "out", "p", "1", "1", "d", false, false},
      {0, "-1", "out", "p", "1", "1", "d", false, false},
      {1, "1", "", "p", "0", "1", "", true, true},
      {1, "1", "", "p", "1", "2", "d", true, false},
      {1, "1", "out", "", "1", "1", "d", false, true},
      {2, "1", "", "", "0", "0", "d", true, true},
      {2, "1", "out", "p", "1", "1", "", false, false},
      {3, "1", "out", "p", "1", "1", "d", false, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    open();
    setOwn("FTP CHKC", c.folderFlag);
    setOwn("FTP CHKF", c.siteFlag);
    setTicket("FTP INFOMATION", "DOMAIN", c.domain);
    form().Text1[Field::kServer].setText("host");
    form().Text1[Field::kAccount].setText("user");
    form().Text1[Field::kPassword].setText(c.password);
    form().Text1[Field::kOutputFolder].setText(c.folder);
    form().Text1[Field::kShopCode].setText(c.shopCode);
    form().Option2[c.destination].select();
    EXPECT_EQ(enabled(Command::kTest), c.test);
    EXPECT_EQ(enabled(Command::kSend), c.send);
    EXPECT_EQ(form().MyMenu_Send.enabled, c.send);

    EXPECT_EQ(endedBy(Command::kCancel), !c.send);
    EXPECT_EQ(desktop.tray.has_value(), c.send);
    EXPECT_EQ(desktop.timer->enabled(), c.send);
    desktop.tray.reset();
  }
}

TEST_F(Panel, NeedsServerAccountAndPasswordForATest) {
  useOwnSite();
  open();
  for (const auto field : {Field::kServer, Field::kAccount, Field::kPassword}) {
    const std::string text = form().text(field);
    form().Text1[field].setText("");
    EXPECT_FALSE(enabled(Command::kTest)) << field;
    form().Text1[field].setText(text);
    EXPECT_TRUE(enabled(Command::kTest)) << field;
  }
}

TEST_F(Panel, SavesOnOkAloneAndBeforeItDecides) {
  open();
  form().Option1[FtpForm::Interval::k60Minutes].select();
  EXPECT_FALSE(endedBy(Command::kCancel));
  EXPECT_EQ(own("FTP TIME"), "1");
  form().MyMenu_Init.onClick();
  EXPECT_FALSE(endedBy(Command::kOk));
  EXPECT_EQ(own("FTP TIME"), "4");
  form().MyMenu_Init.onClick();
  form().Text1[Field::kOutputFolder].setText("");
  EXPECT_TRUE(endedBy(Command::kOk)) << "the save takes the flag of a folder back that is gone";
}

TEST_F(Panel, EnablesTheFieldsOfTheChosenDestinationAlone) {
  open();
  for (const auto destination : {Destination::kUserSite, Destination::kOutputFolder,
                                 Destination::kServiceSite, Destination::kNone}) {
    form().Option2[destination].select();
    const bool folder = destination == Destination::kOutputFolder;
    EXPECT_EQ(form().OutputFolderLabel.enabled(), folder);
    EXPECT_EQ(form().Text1[Field::kOutputFolder].enabled(), folder);
    EXPECT_EQ(form().Command3.enabled(), folder);
    EXPECT_EQ(form().Command4.enabled(), destination == Destination::kUserSite);
  }
}

TEST_F(Panel, BrowsesForTheOutputFolder) {
  open();
  form().Command3.click();
  EXPECT_EQ(form().text(Field::kOutputFolder), kOutFolder) << "cancelled";
  EXPECT_EQ(desktop.folderTitles, std::vector<std::string>{"フォルダの選択"});
  form().Text1[Field::kOutputFolder].setText("");
  desktop.chosenFolder = "表町";
  form().Command3.click();
  EXPECT_EQ(form().text(Field::kOutputFolder), "表町");
  EXPECT_TRUE(enabled(Command::kTest));
  form().Text1[Field::kOutputFolder].focus();
  EXPECT_EQ(form().Text1[Field::kOutputFolder].selectionLength(), 2U);
}

TEST_F(Panel, RefusesToRunWithoutAShopCode) {
  open();
  form().Text1[Field::kShopCode].setText("0");
  for (const auto command : {Command::kSend, Command::kTest}) {
    form().SndNG = true;
    form().Command1[command].setEnabled(true);  // as if it had been pressed just before
    const std::string before = commands();
    desktop.messageBoxes.clear();
    click(command);
    const FakeDesktop::MessageBox box{form().caption(), "店舗コードが不明です。　　"};
    EXPECT_EQ(desktop.messageBoxes, std::vector{box});
    EXPECT_EQ(commands(), before);
    EXPECT_TRUE(form().SndNG);
  }
  EXPECT_TRUE(logMessages().empty());
}

TEST_F(Panel, DisablesItsCommandsWhileARunLasts) {
  useOwnSite();
  setOwn("FTP CHKF", "0");
  open();
  std::string during;
  bool refused = true;
  internet.fault = [&](const std::string&) -> std::optional<FakeInternet::Failure> {
    during = commands();
    EXPECT_FALSE(desktop.timer->enabled());
    return refused ? std::optional(FakeInternet::Failure{12029}) : std::nullopt;
  };
  std::string forgetting;
  desktop.onDiscard = [&] { forgetting = commands(); };
  const auto expectRun = [&](Command::Index command, const std::string& after) {
    during.clear();
    forgetting.clear();
    click(command);
    EXPECT_EQ(during, "00000/0");
    EXPECT_EQ(forgetting, "00000/0") << "clicks that came meanwhile start no other run";
    EXPECT_EQ(commands(), after);
  };
  expectRun(Command::kTest, "11011/0");
  EXPECT_TRUE(form().SndNG);
  refused = false;
  expectRun(Command::kTest, "11111/1");
  refused = true;
  for (int i = 0; i < 2; ++i) expectRun(Command::kSend, "11111/1");
  EXPECT_TRUE(desktop.messageBoxes.empty()) << "a run from the panel is never a second failure";
  EXPECT_FALSE(endedBy(Command::kOk)) << "a test has reached the site";
}

TEST_F(Panel, SendsFromTheTrayMenuWithTheTimerOff) {
  useOwnSite();
  ASSERT_EQ(start(), StartOutcome::kResident);
  internet.fault = [&](const std::string&) -> std::optional<FakeInternet::Failure> {
    EXPECT_FALSE(desktop.timer->enabled());
    EXPECT_EQ(commands(), "00000/0");
    return FakeInternet::Failure{12029};
  };
  for (int i = 0; i < 2; ++i) {
    const int before = form().TimerCount;
    internet.calls.clear();
    form().MyMenu_Send.onClick();
    EXPECT_FALSE(internet.calls.empty());
    EXPECT_TRUE(desktop.timer->enabled());
    EXPECT_EQ(form().TimerCount, before - 150) << "left as the run set it";
    EXPECT_EQ(commands(), "11111/1");
  }
  EXPECT_TRUE(desktop.messageBoxes.empty());
}

}  // namespace
}  // namespace karvel
