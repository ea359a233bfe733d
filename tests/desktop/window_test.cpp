#include "desktop/desktop_fixture.h"

namespace karvel {
namespace {

class Window : public DesktopTest {};

TEST_F(Window, ShowsTheFormAsItHasBecomeMeanwhile) {
  desktop_->bind(form_);
  form_.control("Text", 0).setText("early");
  EXPECT_FALSE(User::isShown(window()));
  form_.setVisible(true);
  EXPECT_TRUE(User::isShown(window()));
  EXPECT_EQ(User::text(widget("Text", 0)), "early");
  form_.setVisible(false);
  EXPECT_FALSE(User::isShown(window()));
  desktop_->release(form_);
}

TEST_F(Window, TheCloseBoxAsksTheFormAndNothingElseCloses) {
  show(form_);
  int closes = 0;
  form_.onClose = [&] { ++closes; };
  user_.useCloseBox(window());
  EXPECT_EQ(closes, 1);
  EXPECT_TRUE(User::isShown(window()));
  form_.markClosed();
  EXPECT_FALSE(User::isShown(window()));
}

TEST_F(Window, AHandlerMayReleaseItsOwnForm) {
  show(form_);
  form_.onClose = [&] {
    form_.markClosed();
    desktop_->release(form_);
  };
  user_.useCloseBox(window());
  form_.control("Text", 0).setText("alone");
  EXPECT_TRUE(form_.closed());
}

TEST_F(Window, MinimisingByTheUserRunsTheResizeHandlerOnce) {
  show(form_);
  int resizes = 0;
  form_.onResize = [&] {
    ++resizes;
    if (form_.windowState() == WindowState::kMinimized) form_.setVisible(false);
  };
  user_.minimize(window());
  EXPECT_EQ(form_.windowState(), WindowState::kMinimized);
  EXPECT_EQ(resizes, 1);
  EXPECT_FALSE(User::isShown(window()));

  form_.setWindowState(WindowState::kNormal);
  form_.setVisible(true);
  desktop_->processPendingMessages();
  EXPECT_TRUE(User::isShown(window()));
  EXPECT_FALSE(User::look(window()).minimized);
  EXPECT_EQ(resizes, 2);
}

TEST_F(Window, EveryKeyIsPreviewedWithTheModifiersAfterIt) {
  show(form_);
  user_.focus(widget("Text", 0));
  std::vector<int> masks;
  form_.onKey = [&](int mask) { masks.push_back(mask); };
  user_.press(Key::kA);
  user_.hold(Key::kShift);
  user_.press(Key::kA);
  user_.hold(Key::kControl);
  user_.release(Key::kControl);
  user_.hold(Key::kAlt);
  user_.press(Key::kF5);
  user_.release(Key::kAlt);
  user_.release(Key::kShift);
  EXPECT_EQ(masks, (std::vector{0, 0, 1, 1, 1, 3, 1, 5, 5, 5, 1, 0}));
  // The key itself went on to its control.
  EXPECT_EQ(form_.control("Text", 0).text(), "aA");
  masks.clear();
  user_.hold(Key::kTab);
  EXPECT_EQ(masks, std::vector{0});
  user_.release(Key::kTab);
}

TEST_F(Window, EnterAndEscapePressTheirButtons) {
  show(form_);
  std::string pressed;
  for (const int index : {0, 1, 2}) {
    form_.control("Button", index).onClick = [&, index] { pressed += std::to_string(index); };
  }
  user_.focus(widget("Text", 0));
  for (const Key key : {Key::kEnter, Key::kKeypadEnter, Key::kEscape}) user_.press(key);
  user_.focus(widget("Button", 2));
  for (const Key key : {Key::kEnter, Key::kSpace, Key::kEscape}) user_.press(key);
  form_.control("Button", 0).setEnabled(false);
  user_.focus(widget("Text", 0));
  user_.press(Key::kEnter);
  EXPECT_EQ(pressed, "001221");
}

TEST_F(Window, TheDefaultButtonKeepsItsLook) {
  show(form_);
  const auto expectDefaultLook = [&](const char* when) {
    SCOPED_TRACE(when);
    EXPECT_TRUE(User::looksDefault(widget("Button", 0)));
    EXPECT_FALSE(User::looksDefault(widget("Button", 2)));
  };
  expectDefaultLook("shown first");
  user_.focus(widget("Button", 2));
  user_.focus(widget("Text", 0));
  expectDefaultLook("after another button had the focus");

  // A command that sends the window to the notification area, whence it comes back.
  form_.control("Button", 2).onClick = [&] {
    form_.setWindowState(WindowState::kMinimized);
    form_.setVisible(false);
  };
  user_.focus(widget("Button", 2));
  user_.press(Key::kSpace);
  form_.setWindowState(WindowState::kNormal);
  form_.setVisible(true);
  desktop_->processPendingMessages();
  if (User::focused() == widget("Button", 2)) user_.press(Key::kTab);
  expectDefaultLook("back from the notification area");

  // A command that cannot be used again.
  form_.control("Button", 2).onClick = [&] { form_.control("Button", 2).setEnabled(false); };
  user_.focus(widget("Button", 2));
  user_.press(Key::kSpace);
  expectDefaultLook("after a button that disables itself");
  EXPECT_NE(User::focused(), nullptr);
}

TEST_F(Window, ACommandHasTheFocusAgainAfterItsRun) {
  show(form_);
  user_.focus(widget("Button", 2));
  form_.control("Button", 2).onClick = [&] {
    for (const bool enabled : {false, true}) {
      for (const int index : {0, 1, 2}) form_.control("Button", index).setEnabled(enabled);
    }
  };
  user_.press(Key::kSpace);
  EXPECT_EQ(User::focused(), widget("Button", 2));
}

TEST_F(Window, ClicksOfABusyTimeCanBeForgotten) {
  show(form_);
  Control& command = form_.control("Button", 2);
  int runs = 0;
  command.onClick = [&] {
    if (++runs > 1) return;
    command.setEnabled(false);
    {
      const BusyScope busy(*desktop_, form_);
      user_.clickAhead(widget("Button", 2));
      user_.clickAhead(widget("Option", 1));
    }
    command.setEnabled(true);
  };
  user_.click(widget("Button", 2));
  EXPECT_EQ(runs, 1);
  EXPECT_FALSE(form_.control("Option", 1).selected());
  EXPECT_EQ(User::focused(), widget("Button", 2));
  user_.click(widget("Button", 2));
  EXPECT_EQ(runs, 2);
}

TEST_F(Window, ATimerTicksWhileEnabled) {
  int ticks = 0;
  const auto timer = desktop_->createTimer(std::chrono::milliseconds(20), [&] { ++ticks; });
  wait(std::chrono::milliseconds(60));
  EXPECT_EQ(ticks, 0);
  timer->setEnabled(true);
  for (int rounds = 0; ticks < 2 && rounds < 100; ++rounds) wait(std::chrono::milliseconds(50));
  EXPECT_GE(ticks, 2);
  std::this_thread::sleep_for(std::chrono::milliseconds(50));  // one is due now
  timer->setEnabled(false);
  const int before = ticks;
  wait(std::chrono::milliseconds(60));
  EXPECT_EQ(ticks, before);
}

TEST_F(Window, TheEndOfTheSessionAsksTheProgramToEnd) {
  int asked = 0;
  desktop_->setEndSessionHandler([&] {
    ++asked;
    desktop_->quit();
  });
  user_.soon([&] { user_.endSession(); });
  desktop_->run();
  EXPECT_EQ(asked, 1);
}

TEST_F(Window, WorksWithoutANotificationArea) {
  show(form_);
  desktop_->changeTrayIcon(TrayImage::kFailure, "none yet");
  desktop_->addTrayIcon(form_, TrayImage::kNormal, "るりはなリンク集計管理", [] {});
  desktop_->changeTrayIcon(TrayImage::kFailure, "るりはなリンク集計管理");
  desktop_->processPendingMessages();
  desktop_->removeTrayIcon();
  desktop_->removeTrayIcon();
  EXPECT_TRUE(User::isShown(window()));
}

}  // namespace
}  // namespace karvel
