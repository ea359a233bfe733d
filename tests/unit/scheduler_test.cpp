#include "shell/scheduler.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fakes/shop_world.h"

namespace karvel {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

std::ptrdiff_t sends(ShopWorld& shop) {
  const auto log = shop.logMessages();
  return std::count(log.begin(), log.end(), "HS-FTP:------------------------ Snd Start");
}

/// Ticks until the next send, that one included; 0 when none comes within `limit` ticks.
int ticksToSend(ShopWorld& shop, int limit) {
  const auto before = sends(shop);
  for (int i = 1; i <= limit; ++i) {
    shop.tick();
    if (sends(shop) > before) return i;
  }
  return 0;
}

TEST(Scheduler, SendsAtTheIntervalsOfItsSetting) {
  const struct {
    std::string time;
    int first;
    int following;
  } cases[] = {{"1", 90, 150}, {"2", 90, 450}, {"3", 90, 900}, {"4", 90, 1800},
               {"0", 0, 0},    {"", 0, 0},     {"5", 0, 0},    {"x", 0, 0}};
  for (const auto& c : cases) {
    ShopWorld shop;
    shop.setOwn("FTP TIME", c.time);
    ASSERT_EQ(shop.start(), StartOutcome::kResident);
    EXPECT_EQ(ticksToSend(shop, 2000), c.first) << c.time;
    EXPECT_EQ(ticksToSend(shop, 2000), c.following) << c.time;
    if (c.first == 0) {
      EXPECT_EQ(shop.form().TimerCount, 0);
    }
  }
}

TEST(Scheduler, AChangedIntervalTakesEffectAtTheNextTick) {
  ShopWorld shop;
  shop.setOwn("FTP TIME", "4");
  ASSERT_EQ(shop.start(), StartOutcome::kResident);
  shop.form().TimerCount = 500;
  shop.setOwn("FTP TIME", "1");
  EXPECT_EQ(ticksToSend(shop, 2), 1);
}

TEST(Scheduler, RetriesAfterFiveMinutesAndShowsEverySecondFailure) {
  ShopWorld shop;
  shop.setOwn("FTP TIME", "3");
  ASSERT_EQ(shop.start(), StartOutcome::kResident);
  shop.files.folders.erase(ShopWorld::kOutFolder);
  const int rhythm[] = {90, 150, 900, 150, 900};
  const std::size_t boxes[] = {0, 1, 1, 2, 2};
  for (std::size_t run = 0; run < std::size(rhythm); ++run) {
    EXPECT_EQ(ticksToSend(shop, 2000), rhythm[run]) << run;
    EXPECT_EQ(shop.desktop.messageBoxes.size(), boxes[run]) << run;
    EXPECT_EQ(shop.desktop.tray, TrayImage::kFailure) << run;
  }
  shop.files.folders.insert(ShopWorld::kOutFolder);
  EXPECT_EQ(ticksToSend(shop, 2000), 150);
  EXPECT_EQ(shop.desktop.tray, TrayImage::kNormal);
  EXPECT_EQ(ticksToSend(shop, 2000), 900);
}

TEST(Scheduler, AnExitRequestSendsOnceMoreAndEnds) {
  const struct {
    std::string time;
    long sent;
  } cases[] = {{"2", 1}, {"4", 1}, {"0", 0}};
  for (const auto& c : cases) {
    ShopWorld shop;
    shop.setOwn("FTP TIME", c.time);
    ASSERT_EQ(shop.start(), StartOutcome::kResident);
    shop.files.files[ShopWorld::path("left.txt")].content = "x";
    shop.setOwn("FTP EXIT", "1");
    shop.setOwn("FTP INIT", "2");
    shop.tick();
    EXPECT_EQ(sends(shop), c.sent) << c.time;
    EXPECT_TRUE(shop.desktop.hasQuit);
    EXPECT_FALSE(shop.form().Timer1->enabled());
    EXPECT_FALSE(shop.desktop.tray);
    EXPECT_EQ(shop.own("FTP EXIT"), "1") << "only the next start resets it";
    EXPECT_EQ(shop.own("FTP INIT"), "2") << "an exit request comes first";
    EXPECT_TRUE(shop.desktop.modals.empty());
    EXPECT_FALSE(shop.files.exists(ShopWorld::path("left.txt")));
    EXPECT_GE(shop.clock.slept, seconds(2));
  }
}

TEST(Scheduler, AnExitRequestDuringASendRunCountsAtItsEnd) {
  ShopWorld shop;
  shop.useOwnSite();
  ASSERT_EQ(shop.start(), StartOutcome::kResident);
  shop.form().TimerCount = 149;
  shop.internet.fault = [&](const std::string& call) -> std::optional<FakeInternet::Failure> {
    if (call == "connect") shop.setOwn("FTP EXIT", "1");
    return std::nullopt;
  };
  shop.tick();
  EXPECT_EQ(sends(shop), 1);
  EXPECT_TRUE(shop.desktop.hasQuit);
}

TEST(Scheduler, ASettingsRequestBringsThePanelBack) {
  for (const std::string value : {"1", "3", "-1", "1x"}) {
    ShopWorld shop;
    ASSERT_EQ(shop.start(), StartOutcome::kResident);
    shop.setOwn("FTP INIT", value);
    shop.tick();
    EXPECT_EQ(shop.own("FTP INIT"), "0") << value;
    EXPECT_TRUE(shop.form().visible());
    EXPECT_EQ(shop.form().caption(), "集計管理");
    EXPECT_FALSE(shop.form().Timer1->enabled());
    EXPECT_TRUE(shop.desktop.modals.empty());
    EXPECT_FALSE(shop.desktop.hasQuit);
  }
}

TEST(Scheduler, ASettingsRequestOfTwoOpensTheGroupDialogToo) {
  for (const bool confirmed : {true, false}) {
    ShopWorld shop;
    ASSERT_EQ(shop.start(), StartOutcome::kResident);
    shop.setOwn("FTP INIT", "2");
    if (!confirmed) shop.setOwn("FTP CHKC", "0");
    shop.tick();
    EXPECT_EQ(shop.desktop.modals, std::vector<std::string>{"GrpForm"});
    EXPECT_EQ(shop.own("FTP INIT"), "0");
    EXPECT_EQ(shop.desktop.hasQuit, !confirmed);
    EXPECT_EQ(shop.form().Timer1->enabled(), confirmed);
    EXPECT_EQ(shop.desktop.tray.has_value(), confirmed);
  }
}

TEST(Scheduler, TheTimerIsOffWhileATickLasts) {
  ShopWorld shop;
  ASSERT_EQ(shop.start(), StartOutcome::kResident);
  shop.files.folders.erase(ShopWorld::kOutFolder);
  shop.form().TimerCount = 149;
  shop.form().SndNG = true;
  bool enabledDuringTick = true;
  shop.desktop.onMessageBox = [&] { enabledDuringTick = shop.form().Timer1->enabled(); };
  shop.tick();
  EXPECT_EQ(shop.desktop.messageBoxes.size(), 1U);
  EXPECT_FALSE(enabledDuringTick);
  EXPECT_TRUE(shop.form().Timer1->enabled());
}

TEST(Scheduler, AFailureMessageLeavesTheTrayMenuAndItsWishes) {
  ShopWorld shop;
  ASSERT_EQ(shop.start(), StartOutcome::kResident);
  shop.files.folders.erase(ShopWorld::kOutFolder);
  shop.form().TimerCount = 149;
  shop.form().SndNG = true;
  bool sendEnabled = true;
  shop.desktop.onMessageBox = [&] {
    sendEnabled = shop.form().MyMenu_Send.enabled;
    shop.form().MyMenu_Init.onClick();
  };
  shop.tick();
  EXPECT_FALSE(sendEnabled) << "no second run inside the first";
  EXPECT_TRUE(shop.form().MyMenu_Send.enabled);
  EXPECT_TRUE(shop.form().visible());
  EXPECT_FALSE(shop.form().Timer1->enabled()) << "the panel is open";
}

}  // namespace
}  // namespace karvel
