#include "send/send_run.h"

#include <gtest/gtest.h>

#include <limits>

#include "fakes/shop_world.h"

namespace karvel {
namespace {

using Command = FtpForm::Command;

/// How a run is made to come out.
enum class Outcome : std::uint8_t {
  kFolderSuccess,
  kFolderFailure,
  kSiteSuccess,
  kConnectFailure,
  kTransferFailure,
};

bool isFolder(Outcome outcome) {
  return outcome == Outcome::kFolderSuccess || outcome == Outcome::kFolderFailure;
}

bool isSuccess(Outcome outcome) {
  return outcome == Outcome::kFolderSuccess || outcome == Outcome::kSiteSuccess;
}

void arrange(ShopWorld& shop, Outcome outcome) {
  if (!isFolder(outcome)) shop.useOwnSite();
  if (outcome == Outcome::kFolderFailure) shop.files.folders.erase(ShopWorld::kOutFolder);
  shop.internet.fault = [outcome](const std::string& call) -> std::optional<FakeInternet::Failure> {
    if (outcome == Outcome::kConnectFailure && call == "connect") {
      return FakeInternet::Failure{Internet::kErrorCannotConnect, ""};
    }
    if (outcome == Outcome::kTransferFailure && call.starts_with("put ")) {
      return FakeInternet::Failure{Internet::kErrorExtended, "552 full"};
    }
    return std::nullopt;
  };
}

struct Row {
  Outcome outcome;
  SendMode mode;
  bool failedBefore;  // SndNG
  std::string status;
  std::string box;  // text of the message box; "" for none
};

const std::string kOpenNg = "FTP:OPEN NG 12029/サーバー接続に失敗しました。";
const std::string kPutNg = "FTP:PutFile NG 12003/552 full";

class SendRunTable : public ::testing::TestWithParam<Row> {};

TEST_P(SendRunTable, ReportsItsOutcome) {
  const Row& row = GetParam();
  ShopWorld shop;
  arrange(shop, row.outcome);
  const bool resident = row.mode == SendMode::kUnattended;
  ASSERT_EQ(shop.start(resident ? "" : "-INIT"),
            resident ? StartOutcome::kResident : StartOutcome::kPanel);
  FtpForm& form = shop.form();
  shop.setOwn("FTP CHKC", "0");
  shop.setOwn("FTP CHKF", "0");
  form.Text1[FtpForm::Field::kSiteFolder].setText("");
  form.Option1[FtpForm::Interval::k15Minutes].select();
  form.SndNG = row.failedBefore;
  form.TimerCount = 449;  // the tick makes it the threshold
  shop.setOwn("FTP TIME", "2");

  if (resident) {
    shop.tick();
  } else {
    form.Command1[row.mode == SendMode::kManual ? Command::kSend : Command::kTest].onClick();
  }

  const bool success = isSuccess(row.outcome);
  const bool saved = success && !resident;
  EXPECT_EQ(form.MsgLabel.caption().substr(0, row.status.size()), row.status);
  EXPECT_EQ(form.MsgLabel.caption().empty(), row.status.empty());
  EXPECT_EQ(shop.own("FTP CHKC"), row.outcome == Outcome::kFolderSuccess ? "1" : "0");
  EXPECT_EQ(shop.own("FTP CHKF"), row.outcome == Outcome::kSiteSuccess ? "1" : "0");
  EXPECT_EQ(form.SndNG, !success && row.box.empty());

  // A save presets the counter, which the success then takes back to 0.
  const int countBefore = resident ? 450 : 449;
  EXPECT_EQ(form.TimerCount, success || !row.box.empty() ? 0 : countBefore - 150);
  EXPECT_EQ(shop.own("OUT FOLD"), "out");
  EXPECT_EQ(shop.own("FTP TIME"), "2");

  if (row.box.empty()) {
    EXPECT_TRUE(shop.desktop.messageBoxes.empty());
  } else {
    const FakeDesktop::MessageBox box{"", row.box};
    EXPECT_EQ(shop.desktop.messageBoxes, std::vector{box});
  }
  if (resident) {
    const bool failureShown = !success && row.box.empty();
    EXPECT_EQ(shop.desktop.tray, failureShown ? TrayImage::kFailure : TrayImage::kNormal);
  } else {
    EXPECT_FALSE(shop.desktop.tray);
  }
  const auto log = shop.logMessages();
  ASSERT_GE(log.size(), 2U);
  EXPECT_EQ(log.front(), "HS-FTP:------------------------ Snd Start");
  EXPECT_EQ(log.back(), "HS-FTP:------------------------ Snd Exit");
  EXPECT_EQ(shop.internet.openHandles, 0) << "no session survives a run";
  EXPECT_EQ(shop.own("FTP TYPE"), isFolder(row.outcome) ? "0" : "1") << saved;
  for (const auto& [path, file] : shop.files.files) {
    EXPECT_FALSE(path.ends_with(".txt") && path.starts_with(ShopWorld::kFolder)) << path;
    EXPECT_FALSE(path.ends_with(".inf") && path.starts_with(ShopWorld::kFolder)) << path;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Outcomes, SendRunTable,
    ::testing::Values(
        Row{Outcome::kFolderSuccess, SendMode::kConnectionTest, false, "接続完了", ""},
        Row{Outcome::kFolderSuccess, SendMode::kManual, false, "転送完了", ""},
        Row{Outcome::kFolderSuccess, SendMode::kUnattended, false, "", ""},
        Row{Outcome::kFolderSuccess, SendMode::kUnattended, true, "", ""},
        Row{Outcome::kFolderFailure, SendMode::kConnectionTest, false, "接続できませんでした", ""},
        Row{Outcome::kFolderFailure, SendMode::kManual, false, "転送できませんでした", ""},
        Row{Outcome::kFolderFailure, SendMode::kUnattended, false, "", ""},
        Row{Outcome::kFolderFailure, SendMode::kUnattended, true, "",
            "転送できませんでした。　　\r\n"},
        Row{Outcome::kConnectFailure, SendMode::kConnectionTest, false, "接続できませんでした", ""},
        Row{Outcome::kConnectFailure, SendMode::kManual, false, kOpenNg, ""},
        Row{Outcome::kConnectFailure, SendMode::kUnattended, false, kOpenNg, ""},
        Row{Outcome::kConnectFailure, SendMode::kUnattended, true, kOpenNg,
            "接続できませんでした。　　\r\nﾈｯﾄﾜｰｸ管理者にご相談下さい。　"},
        Row{Outcome::kTransferFailure, SendMode::kConnectionTest, false, "接続できませんでした",
            ""},
        Row{Outcome::kTransferFailure, SendMode::kManual, false, "転送できませんでした", ""},
        Row{Outcome::kTransferFailure, SendMode::kUnattended, false, kPutNg, ""},
        Row{Outcome::kTransferFailure, SendMode::kUnattended, true, kPutNg,
            "転送できませんでした。　　\r\n設定より接続確認を行って下さい。　"},
        Row{Outcome::kSiteSuccess, SendMode::kConnectionTest, false, "接続完了", ""},
        Row{Outcome::kSiteSuccess, SendMode::kManual, false, "転送完了", ""},
        Row{Outcome::kSiteSuccess, SendMode::kUnattended, false, "FTP:PutFile OK", ""},
        Row{Outcome::kSiteSuccess, SendMode::kUnattended, true, "FTP:PutFile OK", ""}));

TEST(SendRun, ASaveThatFindsThePanelIncompleteTakesTheFlagBack) {
  ShopWorld shop;
  ASSERT_EQ(shop.start("-INIT"), StartOutcome::kPanel);
  shop.setOwn("GRUP CODE", "9999");
  FtpForm& form = shop.form();
  shop.desktop.onMessageBox = [] {};
  form.Command1[Command::kTest].onClick();
  EXPECT_EQ(shop.own("FTP CHKC"), "1");
  EXPECT_FALSE(shop.files.exists(ShopWorld::outPath("999900345.inf")));
}

TEST(SendRun, TheCounterStopsAtTheLowestValueOfItsType) {
  ShopWorld shop;
  ASSERT_EQ(shop.start("-INIT"), StartOutcome::kPanel);
  shop.files.folders.erase(ShopWorld::kOutFolder);
  for (int i = 0; i < 300; ++i) shop.form().Command1[Command::kTest].onClick();
  EXPECT_EQ(shop.form().TimerCount, std::numeric_limits<std::int16_t>::min());
}

}  // namespace
}  // namespace karvel
