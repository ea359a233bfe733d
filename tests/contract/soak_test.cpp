#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "contract/process_usage.h"
#include "contract/site_shop.h"

// A program that stays for weeks, on a clock that does not wait.

namespace karvel {
namespace {

constexpr int kTicksOfARun = 150;

int runsWanted() {
  const char* const wanted = std::getenv("KARVEL_SOAK_RUNS");
  return wanted != nullptr ? std::atoi(wanted) : 8;
}

TEST(Soak, SendsOnTimeAndHoldsNoMoreThanAtItsBeginning) {
  // Midnight, year's end, a leap day, and a clock that jumps both ways.
  constexpr DateTime kMoments[] = {{2024, 1, 15, 23, 59, 59},  {2024, 1, 16, 0, 0, 0},
                                   {2024, 12, 31, 23, 59, 59}, {2025, 1, 1, 0, 0, 0},
                                   {2024, 2, 29, 12, 0, 0},    {1999, 12, 31, 23, 59, 59},
                                   {2099, 6, 30, 1, 2, 3},     {2024, 1, 15, 9, 5, 7}};
  SiteShop shop;
  shop.setOwn("FTP TIME", "1");
  shop.start();
  const int runs = runsWanted();
  ProcessUsage early{};
  for (int run = 0; run < runs && !HasFailure(); ++run) {
    for (int tick = 0; tick < kTicksOfARun; ++tick) {
      shop.clock.time = kMoments[(run * kTicksOfARun + tick) / 97 % std::size(kMoments)];
      shop.desktop.timer->pass();
    }
    const auto commands = shop.server.takeTranscript();
    EXPECT_EQ(std::ranges::count(commands, ScriptedFtpServer::kGreeting), 1);
    EXPECT_FALSE(shop.form().SndNG);
    EXPECT_TRUE(shop.isTidy());
    if (run == runs / 4) early = ProcessUsage::now();
  }
  const ProcessUsage late = ProcessUsage::now();
  std::cout << "soak: " << runs << " runs, " << runs * kTicksOfARun << " ticks, "
            << early.bytes / 1024 << " to " << late.bytes / 1024 << " KiB, " << early.handles
            << " to " << late.handles << " handles\n";
  EXPECT_LE(late.handles, early.handles + 4);  // it varies by one or two from run to run
  EXPECT_GT(early.bytes, 0U);
  EXPECT_LE(late.bytes, early.bytes + ProcessUsage::kAllowance);
}

}  // namespace
}  // namespace karvel
