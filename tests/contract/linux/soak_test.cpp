#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "contract/site_shop.h"

// A program that stays for weeks, on a clock that does not wait.

namespace karvel {
namespace {

constexpr int kTicksOfARun = 150;
constexpr std::size_t kMegabyte = 1024 * 1024;
#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t kAllowance = 300 * kMegabyte;  // of freed memory
#else
constexpr std::size_t kAllowance = 4 * kMegabyte;
#endif

/// What this process holds at the moment.
struct ProcessUsage {
  std::size_t bytes = 0;  ///< of memory; the sanitizers keep what has been freed
  std::ptrdiff_t descriptors = 0;

  static ProcessUsage now() {
    std::size_t pages = 0;
    std::ifstream statm("/proc/self/statm");
    statm >> pages >> pages;
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    return {pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)),
            std::distance(begin(descriptors), end(descriptors))};
  }
};

int runsWanted() {
  const char* const wanted = std::getenv("KARVEL_SOAK_RUNS");
  return wanted != nullptr ? std::atoi(wanted) : 20;
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
            << early.bytes / 1024 << " to " << late.bytes / 1024 << " KiB, " << early.descriptors
            << " to " << late.descriptors << " descriptors\n";
  EXPECT_LE(late.descriptors, early.descriptors + 2);
  EXPECT_GT(early.bytes, 0U);
  EXPECT_LE(late.bytes, early.bytes + kAllowance);
}

/// What a listing may hold; the run ends in time and shows one plain line.
TEST(HostileServer, CostsBoundedTimeAndMemory) {
  const std::string row = "-rw-r--r-- 1 a b 5 Nov  6 2025 ";
  const std::string listings[] = {
      row + std::string(100'000, 'n') + "\r\n",
      row + "../../victim.txt\r\n" + row + "..\r\n" + row + "C:\\x\r\n",
      row + "\x1B[2J\x07\x7F.txt\r\n" + row + "<img src=x><b>.txt\r\n",
      std::string(1'000'000, '\n') + std::string(1'000'000, '\r'),
      std::string(2'000'000, '-'),
  };
  for (const std::string& listing : listings) {
    SCOPED_TRACE(listing.substr(0, 60));
    SiteShop shop;
    shop.server.on("LIST", ScriptedFtpServer::kEvery, {FtpFault::kListing, listing});
    shop.server.on("QUIT", 1, {FtpFault::kReplaceReply, std::string(100'000, '9')});
    shop.longestLimit = 2000;
    shop.start();
    const std::size_t before = ProcessUsage::now().bytes;
    shop.send();
    EXPECT_TRUE(shop.form().SndNG);
    EXPECT_LE(ProcessUsage::now().bytes, before + kAllowance + 60 * kMegabyte);
    for (const unsigned char c : shop.form().MsgLabel.caption()) EXPECT_GE(c, 0x20);
    const std::string log = shop.takeLog();
    const auto isPlain = [](unsigned char c) {
      return c >= 0x20 || c == '\t' || c == '\r' || c == '\n';
    };
    EXPECT_TRUE(std::all_of(log.begin(), log.end(), isPlain)) << log;
    EXPECT_TRUE(shop.isTidy());
  }
}

}  // namespace
}  // namespace karvel
