#include "send/statistics_export.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fakes/shop_world.h"
#include "text/path.h"
#include "text/strings.h"

namespace karvel {
namespace {

using Field = FtpForm::Field;
using std::chrono::milliseconds;

constexpr const char* kSent = "接続完了";
constexpr const char* kNotSent = "接続できませんでした";

/// Deliveries to a folder or a site. What stands in a table is the random shop's.
class Export : public ::testing::Test, protected ShopWorld {
 protected:
  void open() { ASSERT_EQ(start("-INIT"), StartOutcome::kPanel); }
  /// Sends once from the panel; the status line says how it went.
  std::string send() {
    files.written.clear();
    form().Command1[FtpForm::Command::kTest].onClick();
    return form().MsgLabel.caption();
  }
  std::string table() { return content(outPath("00345_240115.txt")); }
  bool infoWritten() {
    return std::any_of(files.written.begin(), files.written.end(),
                       [](const std::string& file) { return file.ends_with(".inf"); });
  }
};

TEST_F(Export, FailsWhereItCannotDeliver) {
  const std::string local = path("00345_240115.txt");
  const struct {
    const char* what;
    std::function<void()> arrange;
  } cases[] = {
      {"an older table that cannot be replaced",
       [&] {
         files.files[local].content = "of another day";
         files.unwritable.insert(local);
       }},
      {"output folder of one character",
       [&] {
         files.folders.insert("o");
         form().Text1[Field::kOutputFolder].setText(" o ");
       }},
      {"output folder that no settings file can name",
       [&] {
         files.folders.insert("1階〜");  // U+301C, which the code page lacks
         form().Text1[Field::kOutputFolder].setText("1階〜");
       }},
      {"an older copy that is read-only",
       [&] {
         files.files[outPath("00345_240115.txt")] = {"old", true};
       }},
  };
  for (const auto& c : cases) {
    files.unwritable.clear();
    files.files.erase(local);
    clearLog();
    open();
    c.arrange();
    EXPECT_EQ(send(), kNotSent) << c.what;
    EXPECT_EQ(files.exists(local), files.unwritable.contains(local)) << c.what;
    const std::string stage = "HS-FTP:-----------------------------";
    EXPECT_EQ(logMessages(),
              (std::vector<std::string>{
                  "HS-FTP:------------------------ Snd Start", stage + " Make_Csv2Send Start",
                  stage + "----- Ftp_ShopFold Start", stage + "----- Ftp_ShopFold Exit",
                  stage + " Make_Csv2Send Exit", "HS-FTP:------------------------ Snd Exit"}))
        << c.what;
  }
}

TEST_F(Export, TakesTheTimeOncePerTable) {
  setTicket("TASHIN INFOMATION", "SHINSATSU", "1");
  open();
  clock.secondsPerLook = 1;
  send();
  const std::string rows = table().substr(table().find('\n') + 1);
  const std::string second = rows.substr(rows.find('\n') + 1);
  EXPECT_EQ(rows.substr(0, 19), second.substr(0, 19));
}

TEST_F(Export, StaysInItsFoldersWhateverTheSettingsSay) {
  files.folders.insert({path("00345_x"), outPath("00345_x"), path("1")});
  for (const char* name : {"x/y", "x\\y", "x:y", ".."}) {
    const std::string victim = outPath(name) + ".inf";
    files.files[victim].content = "of somebody else";
    setTicket("USER INFOMATION", "TODAY", name);
    setOwn("GRUP BACK", name);
    open();
    EXPECT_EQ(send(), kNotSent) << name;
    EXPECT_EQ(files.exists(victim), std::string_view(name) != "..") << name;
    EXPECT_EQ(own("GRUP BACK"), "1200345");
  }
  setOwn("GRUP CODE", "1/");
  send();
  EXPECT_FALSE(infoWritten());
}

TEST_F(Export, DropsUpToTwoSeparatorsAndReplacesACopy) {
  open();
  for (const std::size_t separators : {1U, 2U, 3U}) {
    files.files[outPath("00345_240115.txt")].content = "old";
    form().Text1[Field::kOutputFolder].setText(" out" + std::string(separators, kSeparator) + " ");
    const auto before = clock.slept;
    EXPECT_EQ(send(), separators > 2 ? kNotSent : kSent);
    EXPECT_EQ(table().starts_with("日付"), separators <= 2);
    EXPECT_GE(clock.slept - before, milliseconds(2 * 200)) << "each file gets time to settle";
  }
}

TEST_F(Export, CopiesUnderATemporaryNameWhereTheFolderTakesOne) {
  const std::string temporary = outPath("00345.part");
  files.files[temporary].content = "left by a killed run";
  open();
  EXPECT_EQ(send(), kSent);
  const auto& written = files.written;
  EXPECT_EQ(std::count(written.begin(), written.end(), temporary), 1);
  EXPECT_FALSE(files.exists(temporary));

  files.unwritable = {temporary};
  EXPECT_EQ(send(), kSent);
  EXPECT_TRUE(table().starts_with("日付"));
}

TEST_F(Export, DeliversTheShopInformation) {
  setTicket("FTP INFOMATION", "FTP GRUP", "web1");
  setTicket("FTP INFOMATION", "FTP USER", "user1");
  files.files[outPath(".inf")] = {};
  open();
  send();
  EXPECT_EQ(content(outPath("1200345.inf")),
            "12\t00345\t表町\tソレイユ薬局\tweb1\tuser1\t\t\t\r\n");
  EXPECT_FALSE(files.exists(path("1200345.inf")));
  EXPECT_EQ(own("GRUP BACK"), "1200345");
  EXPECT_TRUE(files.exists(outPath(".inf"))) << "there was no previous identifier";
}

TEST_F(Export, DeliversNoShopInformationThatCouldNotBeWritten) {
  files.files[path("1200345.inf")].content = "of another day";
  files.unwritable.insert(path("1200345.inf"));
  open();
  EXPECT_EQ(send(), kSent);
  EXPECT_FALSE(files.exists(outPath("1200345.inf")));
}

TEST_F(Export, NeedsAnIdentifierOfSevenCharactersForTheShopInformation) {
  const std::pair<const char*, const char*> cases[] = {
      {"9999", "00345"}, {"00", "00000"}, {"", "00345"}, {"ab", "cdefg"}};
  open();
  for (const auto& [group, shop] : cases) {
    setOwn("GRUP CODE", group);
    setOwn("FTP CODE", shop);
    EXPECT_EQ(send(), kSent) << "the statistics do not depend on it";
    EXPECT_FALSE(infoWritten()) << group << shop;
    EXPECT_EQ(own("GRUP BACK"), "");
  }
}

TEST_F(Export, RemovesTheFileOfThePreviousIdentifierOnce) {
  const std::string previous = outPath("1200344.inf");
  setOwn("GRUP BACK", "1200344");
  files.files[previous] = {"old", true};
  open();
  send();
  EXPECT_EQ(own("GRUP BACK"), "1200345") << "also when the removal fails";
  files.files[previous].readOnly = false;
  send();
  EXPECT_TRUE(files.exists(previous)) << "it is not tried again";
  setOwn("FTP CODE", "00346");
  // A file of that name in the program's folder is not the output folder's.
  files.files[path("1200345.inf")].content = "not sent";
  send();
  EXPECT_FALSE(files.exists(outPath("1200345.inf")));
  EXPECT_TRUE(files.exists(outPath("1200346.inf")));
}

TEST_F(Export, OnAServerThePreviousFileIsDeletedWhereItIsListed) {
  useOwnSite();
  FakeInternet::Folder& remote = internet.folders["/"];
  for (const std::string previous : {"1200344", "1200343", ""}) {
    setOwn("GRUP BACK", previous);
    remote = {{"1200344.inf", "old"}, {".inf", "other"}};
    internet.calls.clear();
    open();
    EXPECT_EQ(send(), kSent);
    EXPECT_EQ(remote.contains("1200344.inf"), previous != "1200344");
    EXPECT_TRUE(remote.contains(".inf"));
    EXPECT_TRUE(remote.contains("1200345.inf"));
    EXPECT_TRUE(remote.contains("00345_240115.txt"));
  }
  internet.fault = [](const std::string& call) {
    return call == "put 1200345.xxx" ? std::optional(FakeInternet::Failure{12002}) : std::nullopt;
  };
  EXPECT_EQ(send(), kSent);
  EXPECT_TRUE(remote.contains("1200345.inf")) << "that of the same identifier is only replaced";
}

TEST_F(Export, InBulkHasTheResultOfTheLastDayDelivered) {
  clock.time.year = 2009;
  open();
  form().keyEvent(FtpForm::kShiftAlone);
  EXPECT_EQ(send(), kNotSent) << "no day";
  for (const char* day : {"090101", "090102"}) {
    files.files[joinPath(path("temp"), std::string(day) + ".tmp")] = {};
  }
  files.unwritable = {outPath("00345_090101.txt")};
  EXPECT_EQ(send(), kSent);
  EXPECT_EQ(content(path("00345_090102.txt")), "");
  form().SndNG = false;
  form().MyMenu_Send.onClick();  // which leaves the status line of the last day
  EXPECT_EQ(form().MsgLabel.caption(), "00345_090102.txt 転送");
  files.unwritable = {outPath("00345_090102.txt")};
  EXPECT_EQ(send(), kNotSent);
}

}  // namespace
}  // namespace karvel
