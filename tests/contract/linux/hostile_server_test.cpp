#include <gtest/gtest.h>

#include <algorithm>

#include "contract/process_usage.h"
#include "contract/site_shop.h"

namespace karvel {
namespace {

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
    EXPECT_LE(ProcessUsage::now().bytes, before + ProcessUsage::kAllowance + 60'000'000);
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
