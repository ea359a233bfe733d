#include <gtest/gtest.h>

#include "fakes/shop_world.h"
#include "text/path.h"
#include "ui/grp_form.h"
#include "ui/user_form.h"

namespace karvel {
namespace {

using Field = FtpForm::Field;

/// What the random user cannot see of the dialogs.
class Dialogs : public ::testing::Test, protected ShopWorld {
 protected:
  Dialogs() { EXPECT_EQ(start("-INIT"), StartOutcome::kPanel); }

  template <typename Dialog>
  void open(Control& opener, const std::function<void(Dialog&)>& user) {
    desktop.onModal = [user](Form& dialog) { user(dynamic_cast<Dialog&>(dialog)); };
    opener.click();
    EXPECT_FALSE(desktop.modals.empty());
  }
  Control& groupButton() { return form().Command1[FtpForm::Command::kGroup]; }
};

TEST_F(Dialogs, TheAccountHidesThePassword) {
  form().Option2[FtpForm::Destination::kUserSite].select();
  open<UserForm>(form().Command4, [](UserForm& dialog) {
    for (const Control* field : dialog.Text1.all()) {
      EXPECT_EQ(field->has(ControlRow::kPassword), field->row().index == Field::kPassword);
    }
  });
}

TEST_F(Dialogs, TheGroupStandsAboveAllWindowsAndTakesDigitsAloneInItsCodes) {
  open<GrpForm>(groupButton(), [](GrpForm& dialog) {
    EXPECT_TRUE(dialog.topmost());
    for (const Control* field : dialog.Text1.all()) {
      const int index = field->row().index;
      const bool code = index == Field::kShopCode || index == Field::kGroupCode;
      EXPECT_EQ(field->has(ControlRow::kDigitsOnly), code) << index;
    }
  });
}

TEST_F(Dialogs, TheGroupSettlesTheTicketApplicationsFolderEvenWhenCancelled) {
  setOwn("HST FOLD", "");
  open<GrpForm>(groupButton(), [](GrpForm& dialog) { dialog.close(); });
  EXPECT_EQ(own("HST FOLD"), kFolder);

  files.folders.insert("elsewhere");
  setOwn("HST FOLD", "elsewhere");
  open<GrpForm>(groupButton(), [](GrpForm& dialog) {
    dialog.Text1[Field::kShopName].setText("elsewhere");
    dialog.Command1[GrpForm::Command::kRegister].click();
  });
  EXPECT_FALSE(content(joinPath("elsewhere", "karvel.ini")).empty()) << "where the folder is now";
  EXPECT_EQ(form().text(Field::kShopName), "ソレイユ薬局") << "is not handed back";
}

}  // namespace
}  // namespace karvel
