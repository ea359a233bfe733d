#include <gtest/gtest.h>

#include <algorithm>

#include "fakes/shop_world.h"

namespace karvel {
namespace {

using Field = FtpForm::Field;
using Destination = FtpForm::Destination;
using Command = FtpForm::Command;

/// The buttons' enabled states in the order of their indexes, then the tray menu's send entry.
std::string enabledCommands(FtpForm& form) {
  std::string states;
  for (const Control* command : form.Command1.all()) states += command->enabled() ? '1' : '0';
  return states;
}

struct PanelCase {
  int destination;
  std::string shopCode;
  std::string folder;
  std::string password;
  std::string chkc;
  std::string chkf;
  std::string domain;
  bool test;
  bool send;
};

class Panel : public ::testing::Test, protected ShopWorld {
 protected:
  void open() { ASSERT_EQ(start("-INIT"), StartOutcome::kPanel); }
  void click(Command::Index command) { form().Command1[command].click(); }
  void select(Destination::Index destination) { form().Option2[destination].select(); }
  void arrange(const PanelCase& c) {
    setOwn("FTP CHKC", c.chkc);
    setOwn("FTP CHKF", c.chkf);
    setTicket("FTP INFOMATION", "DOMAIN", c.domain);
    form().Text1[Field::kServer].setText("host");
    form().Text1[Field::kAccount].setText("user");
    form().Text1[Field::kPassword].setText(c.password);
    form().Text1[Field::kOutputFolder].setText(c.folder);
    form().Text1[Field::kShopCode].setText(c.shopCode);
    form().Option2[c.destination].select();
  }
  bool endedBy(Command::Index command) {
    desktop.hasQuit = false;
    click(command);
    return desktop.hasQuit;
  }
};

const PanelCase kPanelCases[] = {
    // destination, shop code, folder, password, folder flag, site flag, domain; test, send
    {0, "00345", "out", "p", "1", "0", "", true, true},
    {0, "00345", "out", "p", "0", "1", "d", true, false},
    {0, "00345", "out", "p", "1x", "0", "", true, true},
    {0, "00345", "out", "p", "2", "0", "", true, false},
    {0, "00345", "", "", "1", "0", "", false, true},
    {0, "", "out", "p", "1", "1", "d", false, false},
    {0, "00000", "out", "p", "1", "1", "d", false, false},
    {0, "-1", "out", "p", "1", "1", "d", false, false},
    {0, "x1", "out", "p", "1", "1", "d", false, false},
    {1, "1", "", "p", "0", "1", "", true, true},
    {1, "1", "", "p", "1", "0", "d", true, false},
    {1, "1", "out", "", "1", "1", "d", false, true},
    {2, "1", "", "", "0", "0", "d", true, true},
    {2, "1", "out", "p", "1", "1", "", false, false},
    {3, "1", "out", "p", "1", "1", "d", false, false},
};

TEST_F(Panel, OffersTestAndSendByShopCodeDestinationAndProof) {
  open();
  for (std::size_t i = 0; i < std::size(kPanelCases); ++i) {
    const PanelCase& c = kPanelCases[i];
    arrange(c);
    EXPECT_EQ(form().Command1[Command::kTest].enabled(), c.test) << i;
    EXPECT_EQ(form().Command1[Command::kSend].enabled(), c.send) << i;
    EXPECT_EQ(form().MyMenu_Send.enabled, c.send) << i;
  }
}

TEST_F(Panel, NeedsServerAccountAndPasswordForATest) {
  useOwnSite();
  open();
  for (const auto field : {Field::kServer, Field::kAccount, Field::kPassword}) {
    const std::string text = form().text(field);
    form().Text1[field].setText("");
    EXPECT_FALSE(form().Command1[Command::kTest].enabled()) << field;
    form().Text1[field].setText(text);
    EXPECT_TRUE(form().Command1[Command::kTest].enabled()) << field;
  }
}

TEST_F(Panel, StaysResidentWhereASendIsPossible) {
  for (std::size_t i = 0; i < std::size(kPanelCases); ++i) {
    const PanelCase& c = kPanelCases[i];
    open();
    arrange(c);
    EXPECT_EQ(endedBy(Command::kCancel), !c.send) << i;
    EXPECT_EQ(desktop.tray.has_value(), c.send) << i;
    EXPECT_EQ(desktop.timer->enabled(), c.send) << i;
    EXPECT_EQ(form().windowState() == WindowState::kMinimized, c.send) << i;
    desktop.tray.reset();
  }
}

TEST_F(Panel, SavesBeforeItDecidesOnOk) {
  open();
  form().Text1[Field::kOutputFolder].setText("");
  EXPECT_TRUE(endedBy(Command::kOk)) << "the save takes the flag of a folder back that is gone";
  EXPECT_EQ(own("FTP CHKC"), "0");

  setOwn("FTP CHKC", "1");
  setOwn("OUT FOLD", kOutFolder);
  open();
  form().Option1[FtpForm::Interval::k60Minutes].select();
  EXPECT_FALSE(endedBy(Command::kCancel));
  EXPECT_EQ(own("FTP TIME"), "1") << "cancelling saves nothing";
  form().MyMenu_Init.onClick();
  EXPECT_FALSE(endedBy(Command::kOk));
  EXPECT_EQ(own("FTP TIME"), "4");
}

TEST_F(Panel, EnablesTheFieldsOfTheChosenDestinationAlone) {
  open();
  for (const auto destination : {Destination::kUserSite, Destination::kOutputFolder,
                                 Destination::kServiceSite, Destination::kNone}) {
    select(destination);
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
  EXPECT_FALSE(form().Command1[Command::kTest].enabled());
  desktop.chosenFolder = "表町";
  form().Command3.click();
  EXPECT_EQ(form().text(Field::kOutputFolder), "表町");
  EXPECT_TRUE(form().Command1[Command::kTest].enabled());
  form().Text1[Field::kOutputFolder].focus();
  EXPECT_EQ(form().Text1[Field::kOutputFolder].selectionLength(), 2U);
}

TEST_F(Panel, RefusesToRunWithoutAShopCode) {
  open();
  for (const std::string code : {"", "0", "-3", "x"}) {
    form().Text1[Field::kShopCode].setText(code);
    for (const auto command : {Command::kSend, Command::kTest}) {
      form().SndNG = true;
      form().Command1[command].setEnabled(true);  // as if it had been pressed just before
      const std::string before = enabledCommands(form());
      desktop.messageBoxes.clear();
      click(command);
      EXPECT_EQ(
          desktop.messageBoxes,
          (std::vector<FakeDesktop::MessageBox>{{form().caption(), "店舗コードが不明です。　　"}}));
      EXPECT_EQ(enabledCommands(form()), before);
      EXPECT_TRUE(form().SndNG);
    }
  }
  EXPECT_TRUE(logMessages().empty());
}

TEST_F(Panel, DisablesItsCommandsWhileARunLasts) {
  useOwnSite();
  open();
  std::string during;
  bool menu = true;
  bool timer = true;
  internet.fault = [&](const std::string&) -> std::optional<FakeInternet::Failure> {
    during = enabledCommands(form());
    menu = form().MyMenu_Send.enabled;
    timer = desktop.timer->enabled();
    return FakeInternet::Failure{12029};
  };
  const auto runEndsWith = [&](const std::string& enabled) {
    EXPECT_EQ(during, "00000");
    EXPECT_FALSE(menu);
    EXPECT_FALSE(timer);
    EXPECT_EQ(enabledCommands(form()), enabled);
    EXPECT_EQ(form().MyMenu_Send.enabled, enabled[Command::kSend] == '1');
    during.clear();
    menu = timer = true;
  };
  click(Command::kTest);
  runEndsWith("11111");
  EXPECT_TRUE(form().SndNG);
  click(Command::kSend);
  runEndsWith("11111");
  EXPECT_TRUE(desktop.messageBoxes.empty()) << "a run from the panel is never a second failure";
  EXPECT_FALSE(desktop.timer->enabled());

  setOwn("FTP CHKF", "0");
  click(Command::kTest);
  runEndsWith("11011");
}

TEST_F(Panel, TestsTheConnectionAndThenStaysResident) {
  useOwnSite();
  setOwn("FTP CHKF", "0");
  open();
  EXPECT_EQ(enabledCommands(form()), "11011");
  click(Command::kTest);
  EXPECT_EQ(form().MsgLabel.caption(), "接続完了");
  EXPECT_EQ(own("FTP CHKF"), "1");
  EXPECT_EQ(enabledCommands(form()), "11111");
  EXPECT_FALSE(endedBy(Command::kOk));
  EXPECT_TRUE(desktop.timer->enabled());
}

TEST_F(Panel, SendsFromTheTrayMenuWithTheTimerOff) {
  useOwnSite();
  ASSERT_EQ(start(), StartOutcome::kResident);
  std::vector<bool> timerDuringRun;
  internet.fault = [&](const std::string&) -> std::optional<FakeInternet::Failure> {
    timerDuringRun.push_back(desktop.timer->enabled());
    EXPECT_EQ(enabledCommands(form()), "00000");
    return FakeInternet::Failure{12029};
  };
  for (int i = 0; i < 2; ++i) {
    const int before = form().TimerCount;
    form().MyMenu_Send.onClick();
    EXPECT_TRUE(desktop.timer->enabled());
    EXPECT_EQ(form().TimerCount, before - 150) << "left as the run set it";
    EXPECT_EQ(enabledCommands(form()), "11111");
    EXPECT_EQ(desktop.tray, TrayImage::kFailure);
  }
  EXPECT_TRUE(desktop.messageBoxes.empty());
  EXPECT_FALSE(timerDuringRun.empty());
  EXPECT_EQ(std::count(timerDuringRun.begin(), timerDuringRun.end(), true), 0);
}

}  // namespace
}  // namespace karvel
