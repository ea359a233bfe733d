#include "send/send_settings.h"

#include <gtest/gtest.h>

#include "fakes/shop_world.h"

namespace karvel {
namespace {

using Field = FtpForm::Field;

void pressOk(ShopWorld& shop) {
  shop.form().Command1[FtpForm::Command::kOk].onClick();
}

TEST(SendSettings, StoresThePanelTrimmed) {
  ShopWorld shop;
  ASSERT_EQ(shop.start("-INIT"), StartOutcome::kPanel);
  FtpForm& form = shop.form();
  form.Option2[FtpForm::Destination::kUserSite].select();
  form.Text1[Field::kServer].setText(" ftp.example.com ");
  form.Text1[Field::kSiteFolder].setText("shop/表");
  form.Text1[Field::kAccount].setText("a");
  form.Text1[Field::kPassword].setText("\"p\\|\"");
  form.Text1[Field::kPort].setText(" 21 ");
  form.Text1[Field::kOutputFolder].setText(" /new out ");
  form.chkPassive.setValue(0);
  pressOk(shop);
  const std::pair<const char*, const char*> expected[] = {
      {"FTP TYPE", "1"},    {"FTP SEVE", "ftp.example.com"}, {"FTP FOLD", "shop/表"},
      {"FTP NAME", "a"},    {"FTP PASS", "\"p\\|\""},        {"FTP PORT", "21"},
      {"FTP PSIV", "0"},    {"OUT FOLD", "/new out"},        {"FTP TIME", "1"},
      {"FTP CODE", "00345"}};
  for (const auto& [key, value] : expected) EXPECT_EQ(shop.own(key), value) << key;
}

TEST(SendSettings, PresetsTheCounterByInterval) {
  const int presets[] = {0, 60, 210, 360, 810};
  for (int interval = 0; interval < 5; ++interval) {
    ShopWorld shop;
    ASSERT_EQ(shop.start("-INIT"), StartOutcome::kPanel);
    shop.form().Option1[interval].select();
    shop.form().TimerCount = 17;
    pressOk(shop);
    EXPECT_EQ(shop.form().TimerCount, presets[interval]);
    EXPECT_EQ(shop.own("FTP TIME"), std::to_string(interval));
  }
}

TEST(SendSettings, WithdrawsTheFlagsOfAnIncompletePanel) {
  const struct {
    const char* what;
    int destination;
    int field;  // emptied or changed
    const char* text;
    const char* folderFlag;
    const char* siteFlag;
  } cases[] = {
      {"complete folder", 0, Field::kServer, "", "1", "1"},
      {"no folder", 0, Field::kOutputFolder, "", "0", "1"},
      {"folder of blanks", 0, Field::kOutputFolder, " ", "1", "1"},
      {"complete site", 1, Field::kOutputFolder, "", "1", "1"},
      {"no server", 1, Field::kServer, "", "1", "0"},
      {"no account", 1, Field::kAccount, "", "1", "0"},
      {"no password", 1, Field::kPassword, "", "1", "0"},
      {"no site folder", 1, Field::kSiteFolder, "", "1", "1"},
      {"no shop code", 0, Field::kShopCode, "", "0", "0"},
      {"shop code zero", 1, Field::kShopCode, "00000", "0", "0"},
      {"shop code text", 2, Field::kShopCode, "x1", "0", "0"},
      {"service site", 2, Field::kServer, "", "1", "1"},
      {"not used", 3, Field::kSiteFolder, "", "0", "0"},
  };
  for (const auto& c : cases) {
    ShopWorld shop;
    shop.useOwnSite();
    ASSERT_EQ(shop.start("-INIT"), StartOutcome::kPanel);
    shop.form().Option2[c.destination].select();
    shop.form().Text1[c.field].setText(c.text);
    pressOk(shop);
    EXPECT_EQ(shop.own("FTP CHKC"), c.folderFlag) << c.what;
    EXPECT_EQ(shop.own("FTP CHKF"), c.siteFlag) << c.what;
  }
}

}  // namespace
}  // namespace karvel
