#include <gtest/gtest.h>

#include <limits>

#include "fakes/shop_world.h"

namespace karvel {
namespace {

using Field = FtpForm::Field;
using Command = FtpForm::Command;

/// What the random user cannot do, or nobody would look for there.
class Panel : public ::testing::Test, protected ShopWorld {
 protected:
  Panel() { EXPECT_EQ(start("-INIT"), StartOutcome::kPanel); }
};

TEST_F(Panel, TakesAFlagForOneByItsNumericValue) {
  setOwn("FTP CHKC", "1x");
  form().Option2[FtpForm::Destination::kOutputFolder].select();
  EXPECT_TRUE(form().Command1[Command::kSend].enabled());
  setOwn("FTP CHKC", "2");
  form().Option2[FtpForm::Destination::kOutputFolder].select();
  EXPECT_FALSE(form().Command1[Command::kSend].enabled());
}

TEST_F(Panel, BeginsTheFolderDialogAtTheFolderThatIsEntered) {
  form().Command3.click();
  EXPECT_EQ(desktop.folderDialogs, std::vector<std::string>{"フォルダの選択 out"});
}

TEST_F(Panel, RefusesToRunWithoutAShopCode) {
  form().Text1[Field::kShopCode].setText("0");
  form().SndNG = true;
  for (const auto command : {Command::kSend, Command::kTest}) {
    form().Command1[command].setEnabled(true);  // as if it had been pressed just before
    desktop.messageBoxes.clear();
    form().Command1[command].click();
    const FakeDesktop::MessageBox box{form().caption(), "店舗コードが不明です。　　"};
    EXPECT_EQ(desktop.messageBoxes, std::vector{box});
    EXPECT_TRUE(form().Command1[command].enabled());
    EXPECT_TRUE(form().SndNG);
  }
  EXPECT_TRUE(logMessages().empty());
}

TEST_F(Panel, LowersTheCounterNoFurtherThanItsTypeGoes) {
  files.folders.erase(kOutFolder);
  for (int i = 0; i < 300; ++i) form().Command1[Command::kTest].click();
  EXPECT_EQ(form().TimerCount, std::numeric_limits<std::int16_t>::min());
}

}  // namespace
}  // namespace karvel
