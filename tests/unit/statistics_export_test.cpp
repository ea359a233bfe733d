#include "send/statistics_export.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fakes/shop_world.h"
#include "text/code_page.h"
#include "text/path.h"
#include "text/strings.h"

namespace karvel {
namespace {

using Field = FtpForm::Field;
using std::chrono::milliseconds;

constexpr const char* kHeader =
    "日付\t時間\tグループNo\tグループ名\t店舗No\t店舗名\t受付No\t受付名\t処理済\t未処理\tメール\t予"
    "約数"
    "\t～09時\t09時～\t11時～\t13時～\t15時～\t17時～\t19時～\t21時～\t平均(分)\t最長(分)\t処理(分)"
    "\r\n";
constexpr const char* kSent = "接続完了";
constexpr const char* kNotSent = "接続できませんでした";

class Export : public ::testing::Test, protected ShopWorld {
 protected:
  void open() { ASSERT_EQ(start("-INIT"), StartOutcome::kPanel); }
  /// Sends once from the panel; the status line says how it went.
  std::string send() {
    files.written.clear();
    form().Command1[FtpForm::Command::kTest].onClick();
    return form().MsgLabel.caption();
  }
  void openBulk(int year) {
    clock.time = {year, 2, 1, 0, 0, 0};
    open();
    form().keyEvent(FtpForm::kShiftAlone);
  }
  void putDay(const std::string& key) {
    files.files[joinPath(path("temp"), key + ".tmp")].content = "";
  }
  /// Keys of the days whose tables the last send put into the output folder.
  std::vector<std::string> daysDelivered() {
    std::vector<std::string> days;
    const std::string begin = outPath("00345_");
    for (const std::string& file : files.written) {
      if (file.starts_with(begin)) days.push_back(file.substr(begin.size(), 6));
    }
    return days;
  }
  std::string table() { return content(outPath("00345_240115.txt")); }
  bool infoWritten() {
    return std::any_of(files.written.begin(), files.written.end(),
                       [](const std::string& file) { return file.ends_with(".inf"); });
  }
};

TEST_F(Export, DeliversTheTableByteForByte) {
  setTicket("TASHIN INFOMATION", "SHINSATSU", "1");
  putReceptions(
      "240115", 1,
      {handled("08:30:00", "08:40:00"), handled("09:00:00", "09:04:00"), "1\t\t\t\t\t\t\t\t\t\t",
       "1\t\t\t\t\t\t\t\t\t\t", "1\t21:00:00\t21:02:00\t\t済\tm\t\t0\t\t\t"});
  open();
  EXPECT_EQ(send(), kSent);
  EXPECT_EQ(table(), std::string(kHeader) +
                         "2024/01/15\t09:05:07\t12\t表町\t00345\tソレイユ薬局\t1\t受付\t3\t2\t1\t0"
                         "\t1\t1\t0\t0\t0\t0\t0\t1\t5\t10\t24\r\n"
                         "2024/01/15\t09:05:07\t12\t表町\t00345\tソレイユ薬局\t2\t"
                         "\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\r\n");
  EXPECT_TRUE(contains(files.files[outPath("00345_240115.txt")].content, "\t\x81\x60\x30\x39"))
      << "the wave dash";

  clock.time = {2024, 1, 15, 18, 0, 0};
  EXPECT_EQ(send(), kSent);
  EXPECT_TRUE(contains(table(), "\t18:00:00\t"));
}

TEST_F(Export, HasARowPerDesk) {
  open();
  const std::pair<const char*, int> cases[] = {{"", 1},  {"5", 6},   {"6", 1},  {"-1", 1},
                                               {"x", 1}, {"2.6", 4}, {"3x", 4}, {"1e9", 1}};
  for (const auto& [stored, rows] : cases) {
    setTicket("TASHIN INFOMATION", "SHINSATSU", stored);
    send();
    const std::string lines = table();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n') - 1, rows) << stored;
  }
}

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
      {"output folder missing", [&] { files.folders.erase(kOutFolder); }},
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
    files.folders.insert(kOutFolder);
    clearLog();
    open();
    c.arrange();
    EXPECT_EQ(send(), kNotSent) << c.what;
    EXPECT_EQ(files.exists(local), files.unwritable.contains(local)) << c.what;
    const auto log = logMessages();
    ASSERT_EQ(log.size(), 6U) << c.what;
    const std::string stage = "HS-FTP:-----------------------------";
    EXPECT_EQ(std::vector<std::string>(log.begin() + 1, log.end() - 1),
              (std::vector<std::string>{
                  stage + " Make_Csv2Send Start", stage + "----- Ftp_ShopFold Start",
                  stage + "----- Ftp_ShopFold Exit", stage + " Make_Csv2Send Exit"}));
  }
}

TEST_F(Export, MakesNoTableWithoutAShopCode) {
  ASSERT_EQ(start(), StartOutcome::kResident);
  form().Text1[Field::kShopCode].setText("0");
  form().MyMenu_Send.onClick();  // which does not ask for one
  EXPECT_FALSE(files.exists(outPath("0_240115.txt")));
}

TEST_F(Export, DropsUpToTwoSeparatorsAndReplacesACopy) {
  const std::string one(1, kSeparator);
  open();
  for (const std::string& ending : {one, one + one}) {
    files.files[outPath("00345_240115.txt")].content = "old";
    form().Text1[Field::kOutputFolder].setText(" out" + ending + " ");
    const auto before = clock.slept;
    EXPECT_EQ(send(), kSent);
    EXPECT_TRUE(table().starts_with("日付"));
    EXPECT_GE(clock.slept - before, milliseconds(2 * 200)) << "each file gets time to settle";
  }
}

TEST_F(Export, DeliversTheShopInformation) {
  setTicket("FTP INFOMATION", "FTP GRUP", "web1");
  setTicket("FTP INFOMATION", "FTP USER", "user1");
  open();
  send();
  EXPECT_EQ(content(outPath("1200345.inf")),
            "12\t00345\t表町\tソレイユ薬局\tweb1\tuser1\t\t\t\r\n");
  EXPECT_FALSE(files.exists(path("1200345.inf")));
  EXPECT_EQ(own("GRUP BACK"), "1200345");
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
  send();
  EXPECT_FALSE(files.exists(outPath("1200345.inf")));
  EXPECT_TRUE(files.exists(outPath("1200346.inf")));
}

TEST_F(Export, OnAServerThePreviousFileIsDeletedWhereItIsListed) {
  useOwnSite();
  FakeInternet::Folder& remote = internet.folders["/"];
  for (const bool listed : {true, false}) {
    setOwn("GRUP BACK", "1200344");
    remote.clear();
    if (listed) remote["1200344.inf"] = "old";
    internet.calls.clear();
    open();
    EXPECT_EQ(send(), kSent);
    const std::string deletion = "delete 1200344.inf";
    EXPECT_EQ(std::count(internet.calls.begin(), internet.calls.end(), deletion), listed ? 1 : 0);
    EXPECT_TRUE(remote.contains("1200345.inf"));
    EXPECT_TRUE(remote.contains("00345_240115.txt"));
    EXPECT_EQ(remote.size(), 2U);
  }
  internet.fault = [](const std::string& call) {
    return call == "put 1200345.xxx" ? std::optional(FakeInternet::Failure{12002}) : std::nullopt;
  };
  EXPECT_EQ(send(), kSent);
  EXPECT_TRUE(remote.contains("1200345.inf")) << "that of the same identifier is only replaced";
}

TEST_F(Export, SendsEveryDayThatHasATableWithShiftHeld) {
  for (const char* key : {"081231", "090101", "090230", "091231", "100201", "101231", "110101"}) {
    putDay(key);
  }
  putReceptions("090101", 1, {handled("10:00:00", "10:05:00")});
  putReceptions("240115", 1, {handled("10:00:00", "10:05:00")});
  openBulk(2010);
  EXPECT_EQ(send(), kSent);
  EXPECT_EQ(daysDelivered(),
            (std::vector<std::string>{"090101", "090230", "091231", "100201", "101231"}));
  EXPECT_FALSE(files.exists(path("00345_090101.txt")));
  EXPECT_EQ(content(outPath("00345_090101.txt")),
            std::string(kHeader) +
                "2009/01/01\t00:00:00\t12\t表町\t00345\tソレイユ薬局\t1\t受付\t1\t0\t0\t0"
                "\t0\t1\t0\t0\t0\t0\t0\t0\t5\t5\t0\r\n");
  form().MyMenu_Send.onClick();
  EXPECT_EQ(form().MsgLabel.caption(), "00345_101231.txt 転送");

  for (const int shift : {0, 2, 3}) {
    form().keyEvent(shift);
    send();
    EXPECT_EQ(daysDelivered(), std::vector<std::string>{"240115"}) << "Shift alone, not " << shift;
  }
}

TEST_F(Export, HasTheResultOfTheLastDayDelivered) {
  openBulk(2009);
  EXPECT_EQ(send(), kNotSent) << "no day";
  putDay("090101");
  putDay("090102");
  files.unwritable = {outPath("00345_090101.txt")};
  EXPECT_EQ(send(), kSent);
  files.unwritable = {outPath("00345_090102.txt")};
  EXPECT_EQ(send(), kNotSent);
}

}  // namespace
}  // namespace karvel
