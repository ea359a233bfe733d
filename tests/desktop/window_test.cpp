#include "desktop/desktop_fixture.h"

namespace karvel {
namespace {

class Window : public ShownForm {};

TEST_F(DesktopTest, ShowsTheFormAsItHasBecomeMeanwhile) {
  desktop_->bind(form_);
  text(0).setText("early");
  EXPECT_FALSE(User::look(window()).isShown);
  form_.setVisible(true);
  EXPECT_EQ(User::look(field(0)).text, "early");
  form_.setVisible(false);
  EXPECT_FALSE(User::look(window()).isShown);
  desktop_->release(form_);
}

TEST_F(Window, TheCloseBoxAsksTheFormWhichMayThenBeReleased) {
  user_.press(Key::kEscape);
  int closes = 0;
  form_.onClose = [&] {
    if (++closes == 1) return;
    form_.markClosed();
    EXPECT_FALSE(User::look(window()).isShown);
    desktop_->release(form_);
  };
  user_.useCloseBox(window());
  EXPECT_TRUE(User::look(window()).isShown);
  user_.useCloseBox(window());
  text(0).setText("alone");
  EXPECT_EQ(closes, 2);
}

TEST_F(Window, MinimisingByTheUserRunsTheResizeHandlerOnce) {
  int resizes = 0;
  form_.onResize = [&] {
    ++resizes;
    if (form_.windowState() == WindowState::kMinimized) form_.setVisible(false);
  };
  user_.minimize(window());
  EXPECT_EQ(form_.windowState(), WindowState::kMinimized);
  EXPECT_FALSE(User::look(window()).isShown);
  form_.setWindowState(WindowState::kNormal);
  form_.setVisible(true);
  desktop_->processPendingMessages();
  EXPECT_TRUE(User::look(window()).isShown);
  EXPECT_EQ(form_.windowState(), WindowState::kNormal);
  EXPECT_EQ(resizes, 2);
}

TEST_F(Window, EveryKeyIsPreviewedOnceWithTheModifiersAfterIt) {
  user_.focus(field(0));
  std::vector<int> masks;
  form_.onKey = [&](int mask) { masks.push_back(mask); };
  user_.hold(Key::kShift);
  user_.press(Key::kV);
  user_.hold(Key::kControl);
  user_.release(Key::kShift);
  user_.release(Key::kControl);
  user_.hold(Key::kTab);
  EXPECT_EQ(masks, (std::vector{1, 1, 1, 3, 2, 0, 0}));
  EXPECT_EQ(text(0).text(), "V") << "the key itself has gone on to its control";
  user_.release(Key::kTab);
}

TEST_F(Window, EnterPressesTheFocusedOrTheDefaultButtonAndEscapeTheOther) {
  std::string pressed;
  logClicks("Button", pressed);
  user_.focus(field(0));
  user_.press(Key::kEnter);
  user_.press(Key::kEscape);
  user_.click(button(2));
  user_.hold(Key::kEnter);
  user_.hold(Key::kEnter);  // repeats
  user_.release(Key::kEnter);
  user_.press(Key::kSpace);
  EXPECT_EQ(pressed, "01222");
  user_.click(field(0));
  user_.press(Key::kEnter);
  EXPECT_EQ(pressed, "012220");
}

TEST_F(Window, TheDefaultButtonKeepsItsLook) {
  const auto looks = [&] {
    return User::look(button(0)).looksDefault && !User::look(button(2)).looksDefault;
  };
  EXPECT_TRUE(looks());
  user_.focus(button(2));
  user_.focus(field(0));
  EXPECT_TRUE(looks()) << "after another button had the focus";

  form_.control("Button", 2).onClick = [&] {
    for (const bool shown : {false, true}) form_.setVisible(shown);
  };
  user_.focus(button(2));
  user_.press(Key::kSpace);
  if (User::focused() == button(2)) user_.press(Key::kTab);
  EXPECT_TRUE(looks()) << "back from the notification area";

  form_.control("Button", 2).onClick = [&] { form_.control("Button", 2).setEnabled(false); };
  user_.focus(button(2));
  user_.press(Key::kSpace);
  EXPECT_TRUE(looks()) << "after a button that disables itself";
  EXPECT_NE(User::focused(), nullptr);
}

TEST_F(Window, WhatIsClickedWhileTheProgramIsBusyIsDiscardedAndTheFocusStays) {
  Control& command = form_.control("Button", 2);
  int runs = 0;
  command.onClick = [&] {
    if (++runs > 1) return;
    command.setEnabled(false);
    {
      const BusyScope busy(*desktop_, form_);
      user_.clickAhead(button(2));
      user_.clickAhead(widget("Option", 1));
      EXPECT_TRUE(User::look(field(0)).waits);
    }
    EXPECT_FALSE(User::look(field(0)).waits);
    command.setEnabled(true);
  };
  user_.click(button(2));
  EXPECT_EQ(runs, 1);
  EXPECT_FALSE(form_.control("Option", 1).selected());
  EXPECT_EQ(User::focused(), button(2));
  user_.click(button(2));
  EXPECT_EQ(runs, 2);
}

TEST_F(Window, ATimerTicksWhileEnabled) {
  using std::chrono::milliseconds;
  int ticks = 0;
  const auto timer = desktop_->createTimer(milliseconds(20), [&] { ++ticks; });
  wait(milliseconds(60));
  EXPECT_EQ(ticks, 0);
  timer->setEnabled(true);
  for (int rounds = 0; ticks < 2 && rounds < 100; ++rounds) wait(milliseconds(50));
  std::this_thread::sleep_for(milliseconds(50));  // one is due now
  timer->setEnabled(false);
  const int before = ticks;
  EXPECT_GE(before, 2);
  wait(milliseconds(60));
  EXPECT_EQ(ticks, before);
}

}  // namespace
}  // namespace karvel
