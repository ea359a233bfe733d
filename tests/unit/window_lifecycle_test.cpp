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

  void expectPanel() {
    EXPECT_TRUE(form().visible());
    EXPECT_EQ(form().windowState(), WindowState::kNormal);
    EXPECT_FALSE(desktop.tray.has_value());
    EXPECT_FALSE(desktop.timer->enabled());
    EXPECT_EQ(form().caption(), "集計管理");
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
  form().Option2[FtpForm::Destination::kNone].select();
  form().setWindowState(WindowState::kMinimized);  // by the user: no destination is asked for
  expectResident();
  EXPECT_EQ(desktop.trayTip, "るりはなリンク集計管理");
  form().MyMenu_Init.onClick();
  expectPanel();
}

TEST_F(Lifecycle, ShowsTheOutcomeOfRunsWhileHiddenOnly) {
  goResident();
  files.folders.erase(kOutFolder);
  form().MyMenu_Send.onClick();
  EXPECT_EQ(desktop.tray, TrayImage::kFailure);
  files.folders.insert(kOutFolder);
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
  desktop.trayRightButtonUp();
  std::string captions;
  for (const MenuItem* item : desktop.openMenu) {
    captions += item->caption + (item->onClick ? "!|" : "|");
  }
  EXPECT_EQ(captions, "手動転送!|接続設定!|-|常駐停止!|");
}

TEST_F(Lifecycle, EndsInOrderFromEitherState) {
  const std::string kept[] = {path("a.csv"), joinPath(path("temp"), "b.txt"), outPath("c.txt")};
  for (const std::string& file : kept) files.files[file] = {};
  const std::function<void()> ends[] = {
      [&] { form().close(); },
      [&] { form().MyMenu_Exit.onClick(); },
      [&] { desktop.endSession(); },
  };
  for (const bool resident : {false, true}) {
    for (const auto& end : ends) {
      resident ? goResident() : open();
      desktop.hasQuit = false;
      files.files[path("B.TXT")] = {};
      std::vector<std::chrono::milliseconds> pauses;
      desktop.onPending = [&, before = clock.slept] {
        pauses.push_back(clock.slept - before);
        EXPECT_EQ(form().visible(), pauses.back() == 0s) << "for a moment";
      };
      end();
      desktop.onPending = nullptr;
      expectEnded();
      if (resident) {
        EXPECT_EQ(form().caption(), "集計管理");
        pauses.erase(pauses.begin());  // the return from the notification area
      }
      EXPECT_EQ(pauses, (std::vector<std::chrono::milliseconds>{1s, 2s}));
      EXPECT_FALSE(files.exists(path("B.TXT")));
      for (const std::string& file : kept) EXPECT_TRUE(files.exists(file)) << file;
    }
  }
}

TEST_F(Lifecycle, EndsOnceWhateverComesMeanwhile) {
  const std::function<void()> messages[] = {
      [&] { form().close(); },
      [&] { form().MyMenu_Init.onClick(); },
      [&] { form().Command1[FtpForm::Command::kCancel].click(); },
      [&] { form().Command1[FtpForm::Command::kSend].click(); },
      [&] { EXPECT_FALSE(form().MyMenu_Send.enabled); },
      [&] { form().setWindowState(WindowState::kMinimized); },
      [&] { tick(); },
  };
  for (const auto& message : messages) {
    SCOPED_TRACE(&message - messages);
    goResident();
    desktop.hasQuit = false;
    const auto before = clock.slept;
    desktop.onPending = message;
    form().close();
    desktop.onPending = nullptr;
    expectEnded();
    form().close();
    EXPECT_LT(clock.slept - before, 3s) << "it is closed already";
  }
}

}  // namespace
}  // namespace karvel
