#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "contract/run_report.h"
#include "contract/site_shop.h"

namespace karvel {
namespace {

using Lines = std::vector<std::string>;

void append(Lines& lines, const Lines& more) {
  lines.insert(lines.end(), more.begin(), more.end());
}

// A whole run that replaces both files, word for word; and the number of its commands, which each
// cost a shop with a slow line a round trip.
TEST(SendRunTranscript, OfARunThatReplacesBothFiles) {
  constexpr std::size_t kMostCommands = 40;
  for (const bool passive : {true, false}) {
    const Lines refresh{"PWD", passive ? "PASV" : "PORT", "LIST"};
    Lines expected{"USER shop", "PASS secret", "PWD", "TYPE A", refresh[1], "LIST", "CWD in"};
    append(expected, refresh);
    const Lines files{SiteShop::kShopInfo, SiteShop::kTable};
    ScriptedFtpServer server;
    for (const std::string& file : files) {
      server.tree().addFile("/in/" + file, "old");
      const std::string temporary = file.substr(0, file.size() - 3) + "xxx";
      append(expected, {refresh[1], "STOR " + temporary});
      append(expected, refresh);
      append(expected, {"DELE " + file});
      append(expected, refresh);
      append(expected, {"RNFR " + temporary, "RNTO " + file});
      append(expected, refresh);
    }
    append(expected, {"QUIT"});

    SiteShop shop(server);
    shop.setPassive(passive);
    shop.start();
    shop.send();
    EXPECT_TRUE(reportOf(shop.takeLog()).succeeded());
    EXPECT_EQ(server.transcript(), expected);
    EXPECT_LE(expected.size(), kMostCommands);
  }
}

}  // namespace
}  // namespace karvel
