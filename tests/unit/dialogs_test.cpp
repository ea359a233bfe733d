#include <gtest/gtest.h>

#include "fakes/shop_world.h"
#include "text/path.h"
#include "text/strings.h"
#include "ui/grp_form.h"
#include "ui/user_form.h"

namespace karvel {
namespace {

using Field = FtpForm::Field;

/// The panel of a shop, from which a user opens a dialog and acts in it.
class Dialogs : public ::testing::Test, protected ShopWorld {
 protected:
  Dialogs() {
    useOwnSite();
    setOwn("FTP FOLD", "表町/");
    setTicket("USER INFOMATION", "USER CODE", "G0012");
    setTicket("FTP INFOMATION", "FTP GRUP", " W1 ");
    EXPECT_EQ(start("-INIT"), StartOutcome::kPanel);
  }

  void account(const std::function<void(UserForm&)>& user) { open(user, form().Command4); }
  void group(const std::function<void(GrpForm&)>& user) {
    open(user, form().Command1[FtpForm::Command::kGroup]);
  }
  template <typename Dialog>
  static void registerIn(Dialog& dialog) {
    dialog.Command1[Dialog::Command::kRegister].click();
    EXPECT_TRUE(dialog.closed());
  }
  std::string stored() { return content(path("karvel.hnb")) + content(path("karvel.ini")); }
  std::string panel() {
    std::string values = std::to_string(form().chkPassive.value());
    for (const Control* field : form().Text1.all()) values += "|" + field->text();
    return values;
  }

  /// Edits everything and leaves by "cancel" and by the close box.
  template <typename Dialog>
  void expectNothingKept(Control& opener) {
    open<Dialog>([](Dialog&) {}, opener);  // settles the caption
    const std::string before = stored() + panel() + form().caption();
    for (const bool cancel : {true, false}) {
      const auto leave = [cancel](Dialog& dialog) {
        for (Control* field : dialog.Text1.all()) field->setText("77");
        if (cancel) {
          dialog.Command1[Dialog::Command::kCancel].click();
        } else {
          dialog.close();
        }
        EXPECT_TRUE(dialog.closed());
      };
      open<Dialog>(leave, opener);
      EXPECT_EQ(stored() + panel() + form().caption(), before);
    }
  }

 private:
  template <typename Dialog>
  void open(const std::function<void(Dialog&)>& user, Control& opener) {
    const std::size_t before = desktop.modals.size();
    desktop.onModal = [user](Form& dialog) { user(dynamic_cast<Dialog&>(dialog)); };
    opener.click();
    EXPECT_EQ(desktop.modals.size(), before + 1);
  }
};

TEST_F(Dialogs, TheAccountOpensAsThePanelHasIt) {
  account([&](UserForm& dialog) {
    for (const Control* field : dialog.Text1.all()) {
      const int index = field->row().index;
      EXPECT_EQ(field->text(), form().Text1[index].text()) << index;
      EXPECT_EQ(field->has(ControlRow::kPassword), index == Field::kPassword);
    }
    EXPECT_EQ(dialog.chkPassive.value(), 1);
    dialog.Text1[Field::kSiteFolder].focus();
    EXPECT_EQ(dialog.Text1[Field::kSiteFolder].selectionLength(), 3U);
  });
}

TEST_F(Dialogs, TheAccountIsHandedBackUntrimmedAndNotStored) {
  const std::string before = stored();
  account([](UserForm& dialog) {
    for (Control* field : dialog.Text1.all()) field->setText(" new ");
    dialog.Text1[Field::kPassword].setText("");
    dialog.chkPassive.setValue(0);
    dialog.Command2.click();
    registerIn(dialog);
  });
  EXPECT_EQ(panel(), "0|out|12|表町|00345|ソレイユ薬局| new | new | new ||21");
  EXPECT_EQ(stored(), before);
  EXPECT_FALSE(form().Command1[FtpForm::Command::kTest].enabled()) << "there is no password now";
}

TEST_F(Dialogs, KeepNothingUnlessTheyRegister) {
  expectNothingKept<UserForm>(form().Command4);
  expectNothingKept<GrpForm>(form().Command1[FtpForm::Command::kGroup]);
}

TEST_F(Dialogs, TheGroupOpensAsThePanelHasItAboveAllWindows) {
  group([&](GrpForm& dialog) {
    for (const auto field :
         {Field::kShopCode, Field::kShopName, Field::kGroupCode, Field::kGroupName}) {
      EXPECT_EQ(dialog.Text1[field].text(), form().text(field)) << field;
    }
    EXPECT_TRUE(dialog.topmost());
    dialog.Text1[Field::kGroupName].focus();
    EXPECT_EQ(dialog.Text1[Field::kGroupName].selectionLength(), 2U);
  });
}

TEST_F(Dialogs, TheGroupStoresCodesPaddedWithZeros) {
  const struct {
    std::string shop;
    std::string group;
    std::string storedShop;
    std::string storedGroup;
  } cases[] = {
      {"123", "7", "00123", "07"},       {"", "&H", "00000", "00"},
      {" 12 3 ", "0012", "00123", "12"}, {"1234567890123", "1e1", "90123", "10"},
      {"12x", "３", "00012", "00"},
  };
  for (const auto& c : cases) {
    group([&](GrpForm& dialog) {
      dialog.Text1[Field::kShopCode].setText(c.shop);
      dialog.Text1[Field::kGroupCode].setText(c.group);
      registerIn(dialog);
    });
    EXPECT_EQ(own("FTP CODE"), c.storedShop);
    EXPECT_EQ(own("GRUP CODE"), c.storedGroup);
    EXPECT_EQ(form().text(Field::kShopCode), c.storedShop);
    EXPECT_EQ(form().text(Field::kGroupCode), c.storedGroup);
  }
}

TEST_F(Dialogs, TheGroupStoresItsNamesTrimmedAndShowsThemInTheCaption) {
  int pending = 0;
  desktop.onPending = [&] { ++pending; };
  group([](GrpForm& dialog) {
    dialog.Text1[Field::kGroupName].setText(" A群 ");
    dialog.Text1[Field::kShopName].setText("elsewhere");
    dialog.Text1[GrpForm::Field::kWebGroup].setText(" W2 ");
    registerIn(dialog);
  });
  EXPECT_TRUE(contains(content(path("karvel.hnb")), "\nGRUP NAME=A群\r\n"));
  EXPECT_EQ(ticket("FTP INFOMATION", "FTP GRUP"), "W2");
  EXPECT_EQ(ticket("KARVEL1 INFOMATION", "USER NAME"), "ソレイユ薬局");
  EXPECT_EQ(form().caption(), "ｸﾞﾙｰﾌﾟ:12/ A群  店舗:00345/ソレイユ薬局");
  EXPECT_EQ(pending, 1) << "messages that waited meanwhile";
}

TEST_F(Dialogs, AGroupUserAloneEditsTheWebGroup) {
  const struct {
    std::string userCode;
    bool enabled;
    std::string shown;
  } cases[] = {{"G", true, "W1"}, {"0012", false, ""}, {"g0012", false, ""}, {"", false, "W1"}};
  for (const auto& c : cases) {
    setTicket("USER INFOMATION", "USER CODE", c.userCode);
    setTicket("FTP INFOMATION", "FTP GRUP", " W1 ");
    group([&](GrpForm& dialog) {
      EXPECT_EQ(dialog.Text1[GrpForm::Field::kWebGroup].enabled(), c.enabled) << c.userCode;
      registerIn(dialog);
    });
    EXPECT_EQ(ticket("FTP INFOMATION", "FTP GRUP"), c.shown) << c.userCode;
  }
}

TEST_F(Dialogs, TheGroupSettlesTheTicketApplicationsFolderEvenWhenCancelled) {
  setOwn("HST FOLD", "");
  group([](GrpForm& dialog) { dialog.close(); });
  EXPECT_EQ(own("HST FOLD"), kFolder);

  files.folders.insert("elsewhere");
  setOwn("HST FOLD", "elsewhere");
  group(registerIn<GrpForm>);
  EXPECT_FALSE(content(joinPath("elsewhere", "karvel.ini")).empty()) << "where the folder is now";
}

TEST_F(Dialogs, TheGroupTakesDigitsAloneInItsCodes) {
  group([](GrpForm& dialog) {
    for (const Control* field : dialog.Text1.all()) {
      const int index = field->row().index;
      const bool code = index == Field::kShopCode || index == Field::kGroupCode;
      for (const char32_t key : {U'0', U'9'}) EXPECT_TRUE(dialog.acceptsKey(*field, key));
      for (const char32_t key : {U'/', U':', U'５'}) {
        EXPECT_EQ(dialog.acceptsKey(*field, key), !code) << index;
      }
    }
  });
}

}  // namespace
}  // namespace karvel
