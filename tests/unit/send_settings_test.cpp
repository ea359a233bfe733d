#include "send/send_settings.h"

#include <gtest/gtest.h>

#include "fakes/shop_world.h"
#include "text/strings.h"

namespace karvel {
namespace {

using Field = FtpForm::Field;

class SavedSettings : public ::testing::Test, protected ShopWorld {
 protected:
  SavedSettings() { useOwnSite(); }
  void open() { ASSERT_EQ(start("-INIT"), StartOutcome::kPanel); }
  void save() { form().Command1[FtpForm::Command::kOk].click(); }
};

TEST_F(SavedSettings, AreThePanelsTextsTrimmed) {
  open();
  const std::pair<int, const char*> texts[] = {{Field::kServer, " ftp.example.org "},
                                               {Field::kSiteFolder, "shop/表"},
                                               {Field::kAccount, "a"},
                                               {Field::kPassword, "\"p\\|\""},
                                               {Field::kPort, " 21 "},
                                               {Field::kOutputFolder, " /new out "}};
  for (const auto& [field, text] : texts) form().Text1[field].setText(text);
  form().chkPassive.setValue(0);
  save();
  const std::pair<const char*, const char*> expected[] = {
      {"FTP TYPE", "1"},        {"FTP SEVE", "ftp.example.org"},
      {"FTP FOLD", "shop/表"},  {"FTP NAME", "a"},
      {"FTP PASS", "\"p\\|\""}, {"FTP PORT", "21"},
      {"OUT FOLD", "/new out"}, {"FTP PSIV", "0"},
      {"FTP CODE", "00345"}};
  for (const auto& [key, value] : expected) EXPECT_EQ(own(key), value) << key;
  EXPECT_TRUE(contains(content(path("karvel.hnb")), "\nFTP PORT=21\r\n"));
}

TEST_F(SavedSettings, PresetTheCounterByInterval) {
  const int presets[] = {0, 60, 210, 360, 810};
  for (int interval = 0; interval < FtpForm::Interval::kCount; ++interval) {
    open();
    form().Option1[interval].select();
    form().TimerCount = 17;
    save();
    EXPECT_EQ(form().TimerCount, presets[interval]);
    EXPECT_EQ(own("FTP TIME"), std::to_string(interval));
  }
}

TEST_F(SavedSettings, WithdrawTheFlagsOfAnIncompletePanel) {
  const struct {
    const char* what;
    int destination;
    int field;  // changed
    const char* text;
    const char* flags;  // of folder and site
  } cases[] = {
      {"complete folder", 0, Field::kServer, "", "11"},
      {"no folder", 0, Field::kOutputFolder, "", "01"},
      {"folder of blanks", 0, Field::kOutputFolder, " ", "11"},
      {"complete site", 1, Field::kOutputFolder, "", "11"},
      {"no server", 1, Field::kServer, "", "10"},
      {"no account", 1, Field::kAccount, "", "10"},
      {"no password", 1, Field::kPassword, "", "10"},
      {"shop code zero", 1, Field::kShopCode, "00000", "00"},
      {"shop code text", 2, Field::kShopCode, "x1", "00"},
      {"service site", 2, Field::kServer, "", "11"},
      {"not used", 3, Field::kSiteFolder, "", "00"},
  };
  for (const auto& c : cases) {
    useOwnSite();
    setOwn("OUT FOLD", kOutFolder);
    setOwn("FTP CHKC", "1");
    open();
    form().Option2[c.destination].select();
    form().Text1[c.field].setText(c.text);
    save();
    EXPECT_EQ(own("FTP CHKC") + own("FTP CHKF"), c.flags) << c.what;
    EXPECT_EQ(own("FTP TYPE"), std::to_string(c.destination)) << c.what;
  }
}

}  // namespace
}  // namespace karvel
