#include <gtest/gtest.h>

#include "fakes/shop_world.h"
#include "ui/user_form.h"

namespace karvel {
namespace {

using Field = FtpForm::Field;

constexpr Field::Index kAccountFields[] = {Field::kServer, Field::kSiteFolder, Field::kAccount,
                                           Field::kPassword, Field::kPort};

class AccountDialog : public ::testing::Test, protected ShopWorld {
 protected:
  AccountDialog() {
    useOwnSite();
    setOwn("FTP FOLD", "表町/");
    EXPECT_EQ(start("-INIT"), StartOutcome::kPanel);
  }

  /// Opens the dialog from the panel and lets the user act in it.
  void withDialog(const std::function<void(UserForm&)>& user) {
    desktop.onModal = [user](Form& dialog) { user(dynamic_cast<UserForm&>(dialog)); };
    form().Command4.click();
  }
  std::vector<std::string> panelAccount() {
    std::vector<std::string> values;
    for (const auto field : kAccountFields) values.push_back(form().text(field));
    values.push_back(std::to_string(form().chkPassive.value()));
    return values;
  }
  static void fill(UserForm& dialog) {
    for (const auto field : kAccountFields) dialog.Text1[field].setText(" new ");
    dialog.chkPassive.setValue(0);
  }
};

TEST_F(AccountDialog, OpensWithThePanelsAccount) {
  withDialog([&](UserForm& dialog) {
    for (const auto field : kAccountFields) {
      EXPECT_EQ(dialog.Text1[field].text(), form().text(field)) << field;
      EXPECT_EQ(dialog.Text1[field].has(ControlRow::kPassword), field == Field::kPassword);
    }
    EXPECT_EQ(dialog.chkPassive.value(), 1);
    EXPECT_EQ(dialog.caption(), "ユーザーサイト設定");
    dialog.Text1[Field::kSiteFolder].focus();
    EXPECT_EQ(dialog.Text1[Field::kSiteFolder].selectionLength(), 3U);
  });
  EXPECT_EQ(desktop.modals, std::vector<std::string>{"UserForm"});
}

TEST_F(AccountDialog, HandsItsFieldsBackUnchangedAndStoresNothing) {
  const std::string stored = content(path("karvel.hnb"));
  withDialog([](UserForm& dialog) {
    fill(dialog);
    dialog.Command2.click();
    dialog.Command1[UserForm::Command::kRegister].click();
    EXPECT_TRUE(dialog.closed());
  });
  EXPECT_EQ(panelAccount(),
            (std::vector<std::string>{" new ", " new ", " new ", " new ", "21", "0"}));
  EXPECT_EQ(content(path("karvel.hnb")), stored);
}

TEST_F(AccountDialog, HandsNothingBackUnlessItRegisters) {
  const auto before = panelAccount();
  withDialog([](UserForm& dialog) {
    fill(dialog);
    dialog.Command1[UserForm::Command::kCancel].click();
    EXPECT_TRUE(dialog.closed());
  });
  EXPECT_EQ(panelAccount(), before);
  withDialog([](UserForm& dialog) {
    fill(dialog);
    dialog.close();
  });
  EXPECT_EQ(panelAccount(), before);
}

TEST_F(AccountDialog, WithoutAPasswordThereIsNothingToTest) {
  EXPECT_TRUE(form().Command1[FtpForm::Command::kTest].enabled());
  withDialog([](UserForm& dialog) {
    dialog.Text1[Field::kPassword].setText("");
    dialog.Command1[UserForm::Command::kRegister].click();
  });
  EXPECT_FALSE(form().Command1[FtpForm::Command::kTest].enabled());
}

}  // namespace
}  // namespace karvel
