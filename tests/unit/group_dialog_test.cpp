#include <gtest/gtest.h>

#include "fakes/shop_world.h"
#include "text/path.h"
#include "ui/grp_form.h"

namespace karvel {
namespace {

using Field = GrpForm::Field;

class GroupDialog : public ::testing::Test, protected ShopWorld {
 protected:
  GroupDialog() {
    setTicket("USER INFOMATION", "USER CODE", "G0012");
    setTicket("FTP INFOMATION", "FTP GRUP", " W1 ");
    EXPECT_EQ(start("-INIT"), StartOutcome::kPanel);
  }

  /// Opens the dialog from the panel and lets the user act in it.
  void withDialog(const std::function<void(GrpForm&)>& user) {
    desktop.onModal = [user](Form& dialog) { user(dynamic_cast<GrpForm&>(dialog)); };
    form().Command1[FtpForm::Command::kGroup].click();
  }
  static void registerIn(GrpForm& dialog) { dialog.Command1[GrpForm::Command::kRegister].click(); }
  std::string settingsText() { return content(path("karvel.hnb")) + content(path("karvel.ini")); }
};

TEST_F(GroupDialog, OpensWithThePanelsValuesAboveAllWindows) {
  withDialog([](GrpForm& dialog) {
    EXPECT_EQ(dialog.Text1[Field::kShopCode].text(), "00345");
    EXPECT_EQ(dialog.Text1[Field::kShopName].text(), "ソレイユ薬局");
    EXPECT_EQ(dialog.Text1[Field::kGroupCode].text(), "12");
    EXPECT_EQ(dialog.Text1[Field::kGroupName].text(), "表町");
    EXPECT_EQ(dialog.caption(), "グループ登録");
    EXPECT_TRUE(dialog.topmost());
    EXPECT_FALSE(dialog.Text1[Field::kShopName].enabled());
    dialog.Text1[Field::kGroupName].focus();
    EXPECT_EQ(dialog.Text1[Field::kGroupName].selectionLength(), 2U);
  });
  EXPECT_EQ(desktop.modals, std::vector<std::string>{"GrpForm"});
}

TEST_F(GroupDialog, StoresCodesPaddedWithZeros) {
  const struct {
    std::string shop;
    std::string group;
    std::string storedShop;
    std::string storedGroup;
  } cases[] = {
      {"123", "7", "00123", "07"},       {"", "", "00000", "00"},
      {"x12", "&H", "00000", "00"},      {" 12 3 ", "0012", "00123", "12"},
      {"123456", "9999", "23456", "99"}, {"1234567890123", "1e1", "90123", "10"},
      {"12x", "３", "00012", "00"},
  };
  for (const auto& c : cases) {
    withDialog([&](GrpForm& dialog) {
      dialog.Text1[Field::kShopCode].setText(c.shop);
      dialog.Text1[Field::kGroupCode].setText(c.group);
      registerIn(dialog);
      EXPECT_TRUE(dialog.closed());
      EXPECT_EQ(dialog.Text1[Field::kShopCode].text(), c.storedShop);
    });
    EXPECT_EQ(own("FTP CODE"), c.storedShop);
    EXPECT_EQ(own("GRUP CODE"), c.storedGroup);
    EXPECT_EQ(form().text(FtpForm::Field::kShopCode), c.storedShop);
    EXPECT_EQ(form().text(FtpForm::Field::kGroupCode), c.storedGroup);
  }
}

TEST_F(GroupDialog, HandsNamesBack) {
  withDialog([](GrpForm& dialog) {
    dialog.Text1[Field::kGroupName].setText(" A群 ");
    dialog.Text1[Field::kShopName].setText("elsewhere");
    dialog.Text1[Field::kWebGroup].setText(" W2 ");
    registerIn(dialog);
  });
  EXPECT_EQ(own("GRUP NAME"), "A群");
  EXPECT_EQ(ticket("FTP INFOMATION", "FTP GRUP"), "W2");
  EXPECT_EQ(ticket("KARVEL1 INFOMATION", "USER NAME"), "ソレイユ薬局");
  EXPECT_EQ(form().text(FtpForm::Field::kShopName), "ソレイユ薬局");
  EXPECT_EQ(form().caption(), "ｸﾞﾙｰﾌﾟ:12/ A群  店舗:00345/ソレイユ薬局");
}

TEST_F(GroupDialog, LetsAGroupUserAloneEditTheWebGroup) {
  const struct {
    std::string userCode;
    bool enabled;
    std::string shown;
  } cases[] = {{"G0012", true, "W1"},
               {"G", true, "W1"},
               {"0012", false, ""},
               {"g0012", false, ""},
               {"", false, "W1"}};
  for (const auto& c : cases) {
    setTicket("USER INFOMATION", "USER CODE", c.userCode);
    setTicket("FTP INFOMATION", "FTP GRUP", " W1 ");
    withDialog([&](GrpForm& dialog) {
      EXPECT_EQ(dialog.Text1[Field::kWebGroup].enabled(), c.enabled) << c.userCode;
      EXPECT_EQ(dialog.Text1[Field::kWebGroup].text(), c.shown) << c.userCode;
      registerIn(dialog);
    });
    EXPECT_EQ(ticket("FTP INFOMATION", "FTP GRUP"), c.shown) << c.userCode;
  }
}

TEST_F(GroupDialog, StoresNothingUnlessItRegisters) {
  withDialog([](GrpForm&) {});
  const std::string before = settingsText();
  const std::string caption = form().caption();
  const std::function<void(GrpForm&)> waysOut[] = {
      [](GrpForm& dialog) { dialog.Command1[GrpForm::Command::kCancel].click(); },
      [](GrpForm& dialog) { dialog.close(); },
  };
  for (const auto& leave : waysOut) {
    withDialog([&](GrpForm& dialog) {
      for (Control* field : dialog.Text1.all()) field->setText("77");
      leave(dialog);
      EXPECT_TRUE(dialog.closed());
    });
    EXPECT_EQ(settingsText(), before);
    EXPECT_EQ(form().text(FtpForm::Field::kShopCode), "00345");
    EXPECT_EQ(form().caption(), caption);
  }
}

TEST_F(GroupDialog, SettlesTheTicketApplicationsFolderEvenWhenCancelled) {
  withDialog([](GrpForm&) {});
  setOwn("HST FOLD", "");
  withDialog([](GrpForm& dialog) { dialog.close(); });
  EXPECT_EQ(own("HST FOLD"), kFolder);

  files.folders.insert("elsewhere");
  setOwn("HST FOLD", "elsewhere");
  withDialog(registerIn);
  EXPECT_FALSE(content(joinPath("elsewhere", "karvel.ini")).empty()) << "where the folder is now";
}

TEST_F(GroupDialog, TakesDigitsAloneInItsCodes) {
  withDialog([](GrpForm& dialog) {
    for (Control* field : dialog.Text1.all()) {
      const bool code =
          field->row().index == Field::kShopCode || field->row().index == Field::kGroupCode;
      for (const char32_t key : {U'0', U'9'}) EXPECT_TRUE(dialog.acceptsKey(*field, key));
      for (const char32_t key : {U'a', U'/', U':', U'-', U' ', U'５', U'あ'}) {
        EXPECT_EQ(dialog.acceptsKey(*field, key), !code) << field->row().index;
      }
    }
  });
}

}  // namespace
}  // namespace karvel
