#include "shell/window_lifecycle.h"

#include <gtest/gtest.h>

#include "fakes/shop_world.h"
#include "text/path.h"

namespace karvel {
namespace {

using namespace std::chrono_literals;

class Lifecycle : public ::testing::Test, protected ShopWorld {
 protected:
  void open() { ASSERT_EQ(start("-INIT"), StartOutcome::kPanel); }
  void goResident() { ASSERT_EQ(start(), StartOutcome::kResident); }

  void expectPanel(const std::string& caption) {
    EXPECT_TRUE(form().visible());
    EXPECT_EQ(form().windowState(), WindowState::kNormal);
    EXPECT_FALSE(desktop.tray.has_value());
    EXPECT_FALSE(desktop.timer->enabled());
    EXPECT_EQ(form().caption(), caption);
  }
  void expectResident() {
    EXPECT_FALSE(form().visible());
    EXPECT_EQ(form().windowState(), WindowState::kMinimized);
    EXPECT_EQ(desktop.tray, TrayImage::kNormal);
    EXPECT_TRUE(desktop.timer->enabled());
    EXPECT_EQ(form().caption(), "");
  }
  void expectEnded() {
    EXPECT_TRUE(desktop.hasQuit);
    EXPECT_TRUE(form().closed());
    EXPECT_FALSE(desktop.tray.has_value());
    EXPECT_FALSE(desktop.timer->enabled());
  }
};

TEST_F(Lifecycle, MovesBetweenPanelAndNotificationArea) {
  open();
  expectPanel("ｸﾞﾙｰﾌﾟ:12/表町 店舗:00345/ソレイユ薬局");
  form().Option2[FtpForm::Destination::kNone].select();
  form().setWindowState(WindowState::kMinimized);  // by the user: no destination is asked for
  expectResident();
  EXPECT_EQ(desktop.trayTip, "るりはなリンク集計管理");
  form().MyMenu_Init.onClick();
  expectPanel("集計管理");
  form().setWindowState(WindowState::kMinimized);
  expectResident();
  setOwn("FTP INIT", "1");
  tick();
  expectPanel("集計管理");
}

TEST_F(Lifecycle, ShowsTheOutcomeOfRunsWhileHiddenOnly) {
  goResident();
  files.folders.erase(kOutFolder);
  form().MyMenu_Send.onClick();
  EXPECT_EQ(desktop.tray, TrayImage::kFailure);
  files.folders.insert(kOutFolder);
  putReceptions("240115", 1, {handled("9:00", "9:10")});
  form().MyMenu_Send.onClick();
  EXPECT_EQ(desktop.tray, TrayImage::kNormal);
  EXPECT_EQ(desktop.trayTip, "るりはなリンク集計管理");

  form().setVisible(true);
  files.folders.erase(kOutFolder);
  form().MyMenu_Send.onClick();
  EXPECT_EQ(desktop.tray, TrayImage::kNormal);
}

TEST_F(Lifecycle, OpensItsMenuOnTheRightButton) {
  goResident();
  ASSERT_TRUE(desktop.openMenu.empty());
  desktop.trayRightButtonUp();
  std::string captions;
  for (const MenuItem* item : desktop.openMenu) captions += item->caption + "|";
  EXPECT_EQ(captions, "手動転送|接続設定|-|常駐停止|");
  for (const MenuItem* item : desktop.openMenu) {
    EXPECT_EQ(item->onClick != nullptr, item->caption != "-") << item->caption;
  }
}

TEST_F(Lifecycle, EndsInOrderFromEitherState) {
  const std::function<void()> ends[] = {
      [&] { form().close(); },
      [&] { form().MyMenu_Exit.onClick(); },
      [&] { desktop.endSession(); },
  };
  for (const bool resident : {false, true}) {
    for (const auto& end : ends) {
      if (resident) {
        goResident();
      } else {
        open();
      }
      desktop.hasQuit = false;
      std::vector<std::chrono::milliseconds> pauses;
      bool panelShown = false;
      desktop.onPending = [&, before = clock.slept] {
        pauses.push_back(clock.slept - before);
        panelShown = form().visible();
      };
      end();
      desktop.onPending = nullptr;
      expectEnded();
      EXPECT_TRUE(panelShown) << "for a moment";
      if (resident) {
        EXPECT_EQ(form().caption(), "集計管理");
        pauses.erase(pauses.begin());  // the return from the notification area
      }
      EXPECT_EQ(pauses, (std::vector<std::chrono::milliseconds>{1s, 2s}));
    }
  }
}

TEST_F(Lifecycle, DeletesTextFilesOfItsOwnFolderAlone) {
  open();
  const std::string kept[] = {path("a.csv"),     path("txt"),
                              path("a.txt.bak"), joinPath(path("temp"), "b.txt"),
                              outPath("c.txt"),  path("locked.txt")};
  for (const std::string& file : kept) files.files[file] = {};
  files.files[path("locked.txt")].readOnly = true;
  files.files[path("a.txt")] = {};
  files.files[path("B.TXT")] = {};
  form().close();
  for (const std::string& file : kept) EXPECT_TRUE(files.exists(file)) << file;
  EXPECT_FALSE(files.exists(path("a.txt")));
  EXPECT_FALSE(files.exists(path("B.TXT")));
}

TEST_F(Lifecycle, EndsOnceWhateverComesMeanwhile) {
  const std::function<void()> messages[] = {
      [&] { form().close(); },
      [&] { form().MyMenu_Exit.onClick(); },
      [&] { form().MyMenu_Init.onClick(); },
      [&] { form().Command1[FtpForm::Command::kCancel].click(); },
      [&] { form().Command1[FtpForm::Command::kOk].click(); },
      [&] { form().Command1[FtpForm::Command::kSend].click(); },
      [&] { EXPECT_FALSE(form().MyMenu_Send.enabled); },
      [&] { form().setWindowState(WindowState::kMinimized); },
      [&] { tick(); },
      [&] { desktop.endSession(); },
  };
  for (std::size_t i = 0; i < std::size(messages); ++i) {
    goResident();
    desktop.hasQuit = false;
    const auto before = clock.slept;
    desktop.onPending = [&] { messages[i](); };
    form().close();
    desktop.onPending = nullptr;
    SCOPED_TRACE(i);
    expectEnded();
    EXPECT_LT(clock.slept - before, 3s);
    form().close();
    EXPECT_LT(clock.slept - before, 3s) << "it is closed already";
  }
}

TEST_F(Lifecycle, RemembersTheShiftKeysOfTheLastKeyEvent) {
  open();
  EXPECT_EQ(form().ShiftState, 0);
  for (const int shift : {1, 7, 0}) {
    form().keyEvent(shift);
    EXPECT_EQ(form().ShiftState, shift);
  }
}

}  // namespace
}  // namespace karvel
