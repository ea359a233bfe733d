#include "shell/scheduler.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fakes/shop_world.h"

namespace karvel {
namespace {

class SchedulerTest : public ::testing::Test, protected ShopWorld {
 protected:
  void goResident(const std::string& ftpTime = "1") {
    setOwn("FTP TIME", ftpTime);
    ASSERT_EQ(start(), StartOutcome::kResident);
  }
  std::ptrdiff_t sends() {
    const auto log = logMessages();
    return std::count(log.begin(), log.end(), "HS-FTP:------------------------ Snd Start");
  }
  /// Ticks until the next send, that one included; 0 when none comes for more than an hour.
  int ticksToSend() {
    clearLog();
    for (int i = 1; i <= 2000; ++i) {
      tick();
      if (sends() > 0) return i;
    }
    return 0;
  }
};

TEST_F(SchedulerTest, SendsAtTheIntervalsOfItsSetting) {
  const struct {
    std::string time;
    int first;
    int following;
  } cases[] = {{"1", 90, 150}, {"2", 90, 450}, {"3", 90, 900}, {"4", 90, 1800},
               {"0", 0, 0},    {"5", 0, 0},    {"x", 0, 0}};
  for (const auto& c : cases) {
    goResident(c.time);
    EXPECT_EQ(ticksToSend(), c.first) << c.time;
    EXPECT_EQ(ticksToSend(), c.following) << c.time;
    EXPECT_EQ(form().TimerCount, 0);
  }
}

TEST_F(SchedulerTest, SendsOnceMoreAndEndsOnRequest) {
  for (const std::string time : {"1", "4", "0"}) {
    goResident(time);
    desktop.hasQuit = false;
    setOwn("FTP EXIT", "1");
    setOwn("FTP INIT", "2");
    const auto before = sends();
    tick();
    EXPECT_EQ(sends() - before, time == "0" ? 0 : 1) << time;
    EXPECT_TRUE(desktop.hasQuit);
    EXPECT_FALSE(desktop.timer->enabled());
    EXPECT_EQ(own("FTP EXIT"), "1") << "only the next start resets it";
    EXPECT_EQ(own("FTP INIT"), "2") << "an exit request comes first";
    EXPECT_TRUE(desktop.modals.empty());
  }
}

TEST_F(SchedulerTest, SeesAnExitRequestThatComesDuringASendRun) {
  useOwnSite();
  goResident();
  form().TimerCount = 149;
  internet.fault = [&](const std::string& call) -> std::optional<FakeInternet::Failure> {
    if (call == "connect") setOwn("FTP EXIT", "1");
    return std::nullopt;
  };
  tick();
  EXPECT_EQ(sends(), 1);
  EXPECT_TRUE(desktop.hasQuit);
}

TEST_F(SchedulerTest, BringsThePanelBackOnRequest) {
  for (const std::string value : {"1", "3", "-1"}) {
    goResident();
    setOwn("FTP INIT", value);
    tick();
    EXPECT_EQ(own("FTP INIT"), "0") << value;
    EXPECT_TRUE(form().visible());
    EXPECT_FALSE(desktop.timer->enabled());
    EXPECT_TRUE(desktop.modals.empty());
    EXPECT_FALSE(desktop.hasQuit);
  }
}

TEST_F(SchedulerTest, OpensTheGroupDialogOnARequestOfTwoAndLeavesThePanelAgain) {
  for (const bool confirmed : {true, false}) {
    goResident();
    desktop.modals.clear();
    setOwn("FTP INIT", "2");
    if (!confirmed) setOwn("FTP CHKC", "0");
    tick();
    EXPECT_EQ(desktop.modals, std::vector<std::string>{"GrpForm"});
    EXPECT_EQ(desktop.hasQuit, !confirmed);
    EXPECT_EQ(desktop.timer->enabled(), confirmed);
    EXPECT_EQ(desktop.tray.has_value(), confirmed);
  }
}

TEST_F(SchedulerTest, StandsStillWhileAFailureMessageIsOpen) {
  goResident();
  files.folders.erase(kOutFolder);
  form().TimerCount = 149;
  form().SndNG = true;
  desktop.onMessageBox = [&] { EXPECT_FALSE(desktop.timer->enabled()); };
  tick();
  EXPECT_EQ(desktop.messageBoxes.size(), 1U);
  EXPECT_TRUE(desktop.timer->enabled());
}

}  // namespace
}  // namespace karvel
