#include "send/send_run.h"

#include <gtest/gtest.h>

#include <limits>

#include "fakes/shop_world.h"
#include "text/strings.h"

namespace karvel {
namespace {

using Command = FtpForm::Command;
using Failure = FakeInternet::Failure;

enum class Outcome : std::uint8_t { kSuccess, kNoConnection, kNoTransfer };

struct Row {
  bool folder;  ///< the destination; else the user's own site
  Outcome outcome;
  SendMode mode;
  bool failedBefore;   ///< SndNG
  std::string status;  ///< without blanks at its end
  std::string box;     ///< text of the message box; "" for none
};

class SendRunTest : public ::testing::Test, protected ShopWorld {
 protected:
  void arrange(const Row& row) {
    setOwn("OUT FOLD", kOutFolder);
    setOwn("FTP TYPE", "0");
    if (!row.folder) useOwnSite();
    setOwn("FTP CHKC", "1");
    files.folders.insert(kOutFolder);
    if (row.folder && row.outcome != Outcome::kSuccess) files.folders.erase(kOutFolder);
    internet.fault = [outcome = row.outcome](const std::string& call) -> std::optional<Failure> {
      if (outcome == Outcome::kNoConnection && call == "connect") return Failure{12029};
      if (outcome == Outcome::kNoTransfer && call.starts_with("put ")) {
        return Failure{Internet::kErrorExtended, "552 full"};
      }
      return std::nullopt;
    };
    desktop.messageBoxes.clear();
    desktop.tray.reset();
    clearLog();
  }
  void run(SendMode mode) {
    if (mode == SendMode::kUnattended) {
      tick();
    } else {
      form().Command1[static_cast<int>(mode)].onClick();
    }
  }
};

constexpr bool kToFolder = true;
constexpr bool kToSite = false;
constexpr auto kTest = SendMode::kConnectionTest;
constexpr auto kManual = SendMode::kManual;
constexpr auto kUnattended = SendMode::kUnattended;
constexpr auto kSuccess = Outcome::kSuccess;
constexpr auto kNoConnection = Outcome::kNoConnection;
constexpr auto kNoTransfer = Outcome::kNoTransfer;

const std::string kNotConnected = "接続できませんでした";
const std::string kNotSent = "転送できませんでした";
const std::string kOpenNg = "FTP:OPEN NG 12029/サーバー接続に失敗しました。";
const std::string kPutNg = "FTP:PutFile NG 12003/552 full";
const std::string kPutOk = "FTP:PutFile OK";

const Row kRows[] = {
    {kToFolder, kSuccess, kTest, false, "接続完了", ""},
    {kToFolder, kSuccess, kManual, false, "転送完了", ""},
    {kToFolder, kSuccess, kUnattended, true, "", ""},
    {kToFolder, kNoTransfer, kTest, false, kNotConnected, ""},
    {kToFolder, kNoTransfer, kManual, false, kNotSent, ""},
    {kToFolder, kNoTransfer, kUnattended, false, "", ""},
    {kToFolder, kNoTransfer, kUnattended, true, "", kNotSent + "。　　\r\n"},
    {kToSite, kNoConnection, kTest, false, kNotConnected, ""},
    {kToSite, kNoConnection, kManual, false, kOpenNg, ""},
    {kToSite, kNoConnection, kUnattended, false, kOpenNg, ""},
    {kToSite, kNoConnection, kUnattended, true, kOpenNg,
     kNotConnected + "。　　\r\nﾈｯﾄﾜｰｸ管理者にご相談下さい。　"},
    {kToSite, kNoTransfer, kTest, false, kNotConnected, ""},
    {kToSite, kNoTransfer, kManual, false, kNotSent, ""},
    {kToSite, kNoTransfer, kUnattended, false, kPutNg, ""},
    {kToSite, kNoTransfer, kUnattended, true, kPutNg,
     kNotSent + "。　　\r\n設定より接続確認を行って下さい。　"},
    {kToSite, kSuccess, kTest, false, "接続完了", ""},
    {kToSite, kSuccess, kManual, false, "転送完了", ""},
    {kToSite, kSuccess, kUnattended, true, kPutOk, ""},
};

TEST_F(SendRunTest, ReportsItsOutcome) {
  for (const Row& row : kRows) {
    SCOPED_TRACE(&row - kRows);
    arrange(row);
    const bool resident = row.mode == kUnattended;
    const bool success = row.outcome == kSuccess;
    const bool saved = success && !resident;
    start(resident ? "" : "-INIT");
    setOwn("FTP CHKC", "0");
    setOwn("FTP CHKF", "0");
    setOwn("FTP TIME", "2");
    form().Option1[FtpForm::Interval::k30Minutes].select();
    form().MsgLabel.setCaption("of the last run");
    form().SndNG = row.failedBefore;
    form().TimerCount = 449;  // a tick makes it the threshold
    run(row.mode);

    EXPECT_EQ(trimmed(form().MsgLabel.caption()), row.status);
    EXPECT_EQ(own("FTP CHKC"), success && row.folder ? "1" : "0");
    EXPECT_EQ(own("FTP CHKF"), success && !row.folder ? "1" : "0");
    EXPECT_EQ(own("FTP TIME"), saved ? "3" : "2");
    EXPECT_EQ(form().SndNG, !success && row.box.empty());
    const int before = resident ? 450 : 449;
    EXPECT_EQ(form().TimerCount, success || !row.box.empty() ? 0 : before - 150);

    using Boxes = std::vector<FakeDesktop::MessageBox>;
    EXPECT_EQ(desktop.messageBoxes, row.box.empty() ? Boxes{} : (Boxes{{"", row.box}}));
    if (resident) {
      const bool failureShown = !success && row.box.empty();
      EXPECT_EQ(desktop.tray, failureShown ? TrayImage::kFailure : TrayImage::kNormal);
    }
    const auto log = logMessages();
    ASSERT_FALSE(log.empty());
    EXPECT_EQ(log.front(), "HS-FTP:------------------------ Snd Start");
    EXPECT_EQ(log.back(), "HS-FTP:------------------------ Snd Exit");
    EXPECT_EQ(internet.openHandles, 0) << "no session survives a run";
    for (const auto& [path, file] : files.files) {
      EXPECT_FALSE(path.starts_with("shop") && (path.ends_with(".txt") || path.ends_with(".inf")));
    }
  }
}

TEST_F(SendRunTest, LowersTheCounterNoFurtherThanItsTypeGoes) {
  arrange({kToFolder, kNoTransfer, kTest, false, "", ""});
  start("-INIT");
  for (int i = 0; i < 300; ++i) run(kTest);
  EXPECT_EQ(form().TimerCount, std::numeric_limits<std::int16_t>::min());
}

}  // namespace
}  // namespace karvel
