#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "contract/known_differences.h"
#include "contract/run_report.h"
#include "contract/site_shop.h"

// Accounts, folders and servers that a shop cannot send to: what it sees of that, and that it goes
// on afterwards.

namespace karvel {
namespace {

using std::chrono::milliseconds;
using Field = FtpForm::Field;

constexpr std::uint32_t kShortLimit = 300;  ///< milliseconds
const std::string kOpenNg = "FTP:OPEN NG ";
const std::string kNoFolder = "指定フォルダがありません";

class BadInput : public ::testing::Test {
 protected:
  BadInput() {
    server_.tree().addFile("/in/" + std::string(SiteShop::kTable), "old");
    shop_.start();
    shop_.internet.longestLimit = kShortLimit;
  }

  /// A run that must end without having been connected. Its status line, without the blanks at its
  /// end.
  std::string failedRun() {
    shop_.form().TimerCount = 0;
    shop_.send();
    const auto log = shop_.takeLog();
    EXPECT_TRUE(reportOf(log).wellFormed);
    EXPECT_FALSE(reportOf(log).connected);
    EXPECT_EQ(shop_.own("FTP CHKF"), "0");
    EXPECT_EQ(shop_.form().TimerCount, -150);
    EXPECT_TRUE(shop_.desktop.timer->enabled());
    EXPECT_EQ(shop_.desktop.tray, TrayImage::kFailure);
    std::string status = shop_.form().MsgLabel.caption();
    status.erase(status.find_last_not_of(' ') + 1);
    expectNoPassword(log);
    return status;
  }

  void expectNoPassword(const std::vector<std::string>& log) {
    const std::string password = shop_.form().text(Field::kPassword);
    if (password.empty()) return;
    std::vector<std::string> shown = log;
    shown.push_back(shop_.form().MsgLabel.caption());
    shown.push_back(shop_.form().caption());
    shown.push_back(shop_.desktop.trayTip);
    for (const auto& box : shop_.desktop.messageBoxes) shown.push_back(box.title + box.text);
    for (const std::string& text : shown) EXPECT_EQ(text.find(password), std::string::npos) << text;
  }

  /// With everything put right the next run arrives, over a connection of its own.
  void expectRecovery() {
    server_.behave();
    shop_.internet.longestLimit = UINT32_MAX;
    type(Field::kServer, "127.0.0.1");
    type(Field::kSiteFolder, SiteShop::kSiteFolder);
    type(Field::kAccount, server_.options().user);
    type(Field::kPassword, server_.options().password);
    type(Field::kPort, std::to_string(server_.port()));
    shop_.send();
    EXPECT_TRUE(reportOf(shop_.takeLog()).succeeded()) << shop_.form().MsgLabel.caption();
    EXPECT_EQ(shop_.form().TimerCount, 0);
    EXPECT_EQ(shop_.desktop.tray, TrayImage::kNormal);
  }

  void type(Field::Index field, const std::string& text) {
    shop_.form().Text1[field].setText(text);
  }

  ScriptedFtpServer server_;
  SiteShop shop_{server_};
};

TEST_F(BadInput, AWrongPasswordOrAccount) {
  type(Field::kPassword, "not-the-word");
  EXPECT_EQ(failedRun(), kOpenNg + "12015/ログオン要求に失敗しました。");
  type(Field::kPassword, server_.options().password);
  type(Field::kAccount, "nobody");
  EXPECT_EQ(failedRun(), kOpenNg + "12015/ログオン要求に失敗しました。");
  expectRecovery();
}

TEST_F(BadInput, AFolderThatIsMissing) {
  shop_.internet.longestLimit = UINT32_MAX;
  for (const char* folder : {"none", "in/none", "/in/../none", SiteShop::kTable}) {
    type(Field::kSiteFolder, folder);
    EXPECT_EQ(failedRun(), kNoFolder) << folder;
  }
  expectRecovery();
}

TEST_F(BadInput, AServerThatSpeaksNoFtp) {
  if (differsHere(Difference::kTimeLimitsDoNotHold)) return;  // waits for it without an end
  for (const auto& [name, greeting] : kForeignGreetings) {
    server_.behave();
    server_.on(ScriptedFtpServer::kGreeting, 1, greeting);
    const auto begin = std::chrono::steady_clock::now();
    const std::string status = failedRun();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, milliseconds{5000}) << name;
    EXPECT_TRUE(status.starts_with(kOpenNg) && status.size() > kOpenNg.size() + 3)
        << name << ": " << status;
  }
  expectRecovery();
}

// The first failure brings the next attempt forward, the second one in a row is told.
TEST_F(BadInput, TheRetryRhythmGoesOn) {
  constexpr int kThreshold = 150;
  server_.on("USER", ScriptedFtpServer::kEvery, FtpFault::refuse("421 No."));
  FtpForm& form = shop_.form();
  for (const std::size_t boxesSoFar : {0U, 1U, 1U, 2U}) {
    const bool toldNow = boxesSoFar > shop_.desktop.messageBoxes.size();
    form.TimerCount = kThreshold - 1;
    shop_.desktop.timer->pass();
    EXPECT_EQ(shop_.desktop.messageBoxes.size(), boxesSoFar);
    EXPECT_EQ(form.SndNG, !toldNow);
    EXPECT_TRUE(shop_.desktop.timer->enabled());
    expectNoPassword(shop_.takeLog());
  }
  EXPECT_EQ(server_.connections(), 4);
  expectRecovery();
}

}  // namespace
}  // namespace karvel
