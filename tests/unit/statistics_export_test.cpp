#include "send/statistics_export.h"

#include <gtest/gtest.h>

#include "fakes/shop_world.h"
#include "text/code_page.h"
#include "text/path.h"

namespace karvel {
namespace {

using Field = FtpForm::Field;

constexpr const char* kHeader =
    "日付\t時間\tグループNo\tグループ名\t店舗No\t店舗名\t受付No\t受付名\t処理済\t未処理\tメール\t予"
    "約数"
    "\t～09時\t09時～\t11時～\t13時～\t15時～\t17時～\t19時～\t21時～\t平均(分)\t最長(分)\t処理(分)"
    "\r\n";
constexpr const char* kZeros = "\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\r\n";

/// Sends once from the panel; the status line says how it went.
std::string send(ShopWorld& shop) {
  shop.form().Command1[FtpForm::Command::kTest].onClick();
  return shop.form().MsgLabel.caption();
}

std::vector<std::string> written(const ShopWorld& shop, const std::string& ending) {
  std::vector<std::string> names;
  for (const std::string& path : shop.files.written) {
    if (path.ends_with(ending)) names.push_back(path);
  }
  return names;
}

TEST(StatisticsTable, IsWrittenByteForByte) {
  ShopWorld shop;
  shop.setTicket("TASHIN INFOMATION", "SHINSATSU", "1");
  shop.putReceptions(
      "240115", 1,
      {ShopWorld::handled("08:30:00", "08:40:00"), ShopWorld::handled("09:00:00", "09:04:00"),
       "1\t\t\t\t\t\t\t\t\t\t", "1\t21:00:00\t21:02:00\t\t済\tm\t\t2\t\t\t"});
  ASSERT_EQ(shop.start("-INIT"), StartOutcome::kPanel);
  EXPECT_EQ(send(shop), "接続完了");
  EXPECT_EQ(shop.content(ShopWorld::outPath("00345_240115.txt")),
            std::string(kHeader) +
                "2024/01/15\t09:05:07\t12\t表町\t00345\tソレイユ薬局\t1\t受付\t3\t1\t1\t1"
                "\t1\t1\t0\t0\t0\t0\t0\t1\t5\t10\t24\r\n"
                "2024/01/15\t09:05:07\t12\t表町\t00345\tソレイユ薬局\t2\t" +
                kZeros);
  const std::string& bytes = shop.files.files[ShopWorld::outPath("00345_240115.txt")].content;
  EXPECT_NE(bytes.find("\t\x81\x60"
                       "09\x8E\x9E\t"),
            std::string::npos)
      << "the wave dash";

  shop.clock.time = {2024, 1, 15, 18, 0, 0};
  EXPECT_EQ(send(shop), "接続完了");
  EXPECT_NE(shop.content(ShopWorld::outPath("00345_240115.txt")).find("\t18:00:00\t"),
            std::string::npos);
}

TEST(StatisticsTable, HasARowPerDesk) {
  const struct {
    std::string stored;
    long rows;
  } cases[] = {{"", 1},   {"0", 1}, {"5", 6},   {"6", 1},   {"9", 1},
               {"-1", 1}, {"x", 1}, {"2.4", 3}, {"1e9", 1}, {"3x", 4}};
  for (const auto& c : cases) {
    ShopWorld shop;
    shop.setTicket("TASHIN INFOMATION", "SHINSATSU", c.stored);
    ASSERT_EQ(shop.start("-INIT"), StartOutcome::kPanel);
    send(shop);
    const std::string table = shop.content(ShopWorld::outPath("00345_240115.txt"));
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n') - 1, c.rows) << c.stored;
  }
}

TEST(StatisticsExport, WithoutATableNothingIsSent) {
  const struct {
    const char* what;
    std::function<void(ShopWorld&)> arrange;
  } cases[] = {
      {"program folder read-only",
       [](ShopWorld& shop) { shop.files.unwritable.insert(ShopWorld::path("00345_240115.txt")); }},
      {"output folder missing",
       [](ShopWorld& shop) { shop.files.folders.erase(ShopWorld::kOutFolder); }},
      {"output folder is a file",
       [](ShopWorld& shop) {
         shop.files.folders.erase(ShopWorld::kOutFolder);
         shop.files.files[ShopWorld::kOutFolder].content = "x";
       }},
      {"output folder of one character",
       [](ShopWorld& shop) { shop.form().Text1[Field::kOutputFolder].setText(" / "); }},
      {"an older copy that is read-only",
       [](ShopWorld& shop) {
         shop.files.files[ShopWorld::outPath("00345_240115.txt")] = {"old", true};
       }},
  };
  for (const auto& c : cases) {
    ShopWorld shop;
    ASSERT_EQ(shop.start("-INIT"), StartOutcome::kPanel);
    c.arrange(shop);
    EXPECT_EQ(send(shop), "接続できませんでした") << c.what;
    EXPECT_FALSE(shop.files.exists(ShopWorld::path("00345_240115.txt"))) << c.what;
    const auto log = shop.logMessages();
    ASSERT_EQ(log.size(), 6U) << c.what;
    EXPECT_EQ(log[1], "HS-FTP:----------------------------- Make_Csv2Send Start");
    EXPECT_EQ(log[2], "HS-FTP:---------------------------------- Ftp_ShopFold Start");
    EXPECT_EQ(log[3], "HS-FTP:---------------------------------- Ftp_ShopFold Exit");
    EXPECT_EQ(log[4], "HS-FTP:----------------------------- Make_Csv2Send Exit");
  }
}

TEST(FolderCopy, DropsUpToTwoSeparatorsAndReplacesACopy) {
  const std::string one(1, kSeparator);
  for (const std::string& ending : {one, one + one}) {
    ShopWorld shop;
    ASSERT_EQ(shop.start("-INIT"), StartOutcome::kPanel);
    shop.files.files[ShopWorld::outPath("00345_240115.txt")].content = "old";
    shop.form().Text1[Field::kOutputFolder].setText(" out" + ending + " ");
    EXPECT_EQ(send(shop), "接続完了");
    EXPECT_TRUE(shop.content(ShopWorld::outPath("00345_240115.txt")).starts_with("日付"));
  }
}

TEST(ShopInfo, IsWrittenDeliveredAndDeleted) {
  ShopWorld shop;
  shop.setTicket("FTP INFOMATION", "FTP GRUP", "web1");
  shop.setTicket("FTP INFOMATION", "FTP USER", "user1");
  ASSERT_EQ(shop.start("-INIT"), StartOutcome::kPanel);
  send(shop);
  EXPECT_EQ(shop.content(ShopWorld::outPath("1200345.inf")),
            "12\t00345\t表町\tソレイユ薬局\tweb1\tuser1\t\t\t\r\n");
  EXPECT_FALSE(shop.files.exists(ShopWorld::path("1200345.inf")));
  EXPECT_EQ(shop.own("GRUP BACK"), "1200345");
}

TEST(ShopInfo, NeedsAnIdentifierOfSevenCharacters) {
  const struct {
    std::string group;
    std::string shop;
  } cases[] = {{"9999", "00345"}, {"00", "00000"}, {"", "00345"}, {"ab", "cdefg"}, {"12", "0345"}};
  for (const auto& c : cases) {
    ShopWorld shop;
    ASSERT_EQ(shop.start("-INIT"), StartOutcome::kPanel);
    shop.setOwn("GRUP CODE", c.group);
    shop.setOwn("FTP CODE", c.shop);
    EXPECT_EQ(send(shop), "接続完了") << "the statistics do not depend on it";
    EXPECT_TRUE(written(shop, ".inf").empty()) << c.group << c.shop;
    EXPECT_EQ(shop.own("GRUP BACK"), "");
  }
}

TEST(ShopInfo, RemovesTheFileOfThePreviousIdentifierOnce) {
  ShopWorld shop;
  shop.setOwn("GRUP BACK", "1200344");
  shop.files.files[ShopWorld::outPath("1200344.inf")] = {"old", true};
  ASSERT_EQ(shop.start("-INIT"), StartOutcome::kPanel);
  send(shop);
  EXPECT_EQ(shop.own("GRUP BACK"), "1200345") << "also when the removal fails";
  EXPECT_TRUE(shop.files.exists(ShopWorld::outPath("1200344.inf")));
  shop.files.files[ShopWorld::outPath("1200344.inf")].readOnly = false;
  send(shop);
  EXPECT_TRUE(shop.files.exists(ShopWorld::outPath("1200344.inf"))) << "it is not tried again";

  shop.setOwn("FTP CODE", "00346");
  send(shop);
  EXPECT_FALSE(shop.files.exists(ShopWorld::outPath("1200345.inf")));
  EXPECT_TRUE(shop.files.exists(ShopWorld::outPath("1200346.inf")));
}

TEST(ShopInfo, OnAServerThePreviousFileIsDeletedWhereItIsListed) {
  for (const bool listed : {true, false}) {
    ShopWorld shop;
    shop.useOwnSite();
    shop.setOwn("GRUP BACK", "1200344");
    if (listed) shop.internet.folders["/"]["1200344.inf"] = "old";
    ASSERT_EQ(shop.start("-INIT"), StartOutcome::kPanel);
    EXPECT_EQ(send(shop), "接続完了");
    const auto& calls = shop.internet.calls;
    const bool deleted = std::find(calls.begin(), calls.end(), "delete 1200344.inf") != calls.end();
    EXPECT_EQ(deleted, listed);
    EXPECT_EQ(shop.internet.folders["/"].size(), 2U);
    EXPECT_TRUE(shop.internet.folders["/"].contains("1200345.inf"));
    EXPECT_TRUE(shop.internet.folders["/"].contains("00345_240115.txt"));
  }
}

TEST(BulkExport, SendsEveryDayThatHasATable) {
  ShopWorld shop;
  shop.clock.time = {2010, 2, 1, 0, 0, 0};
  for (const char* key : {"081231", "090101", "090230", "091231", "100201", "101231", "110101"}) {
    shop.files.files[joinPath(ShopWorld::path("temp"), std::string(key) + ".tmp")].content = "";
  }
  shop.putReceptions("090101", 1, {ShopWorld::handled("10:00:00", "10:05:00")});
  shop.putReceptions("240115", 1, {ShopWorld::handled("10:00:00", "10:05:00")});
  ASSERT_EQ(shop.start("-INIT"), StartOutcome::kPanel);
  shop.form().keyEvent(1);
  EXPECT_EQ(send(shop), "接続完了");
  EXPECT_EQ(
      written(shop, ".txt"),
      (std::vector{ShopWorld::path("00345_090101.txt"), ShopWorld::outPath("00345_090101.txt"),
                   ShopWorld::path("00345_090230.txt"), ShopWorld::outPath("00345_090230.txt"),
                   ShopWorld::path("00345_091231.txt"), ShopWorld::outPath("00345_091231.txt"),
                   ShopWorld::path("00345_100201.txt"), ShopWorld::outPath("00345_100201.txt"),
                   ShopWorld::path("00345_101231.txt"), ShopWorld::outPath("00345_101231.txt")}));
  EXPECT_EQ(shop.content(ShopWorld::outPath("00345_090101.txt")),
            std::string(kHeader) +
                "2009/01/01\t00:00:00\t12\t表町\t00345\tソレイユ薬局\t1\t受付\t1\t0\t0\t0"
                "\t0\t1\t0\t0\t0\t0\t0\t0\t5\t5\t0\r\n");
}

TEST(BulkExport, WalksEveryDayTextOfItsFirstYear) {
  ShopWorld shop;
  shop.clock.time = {2009, 6, 1, 0, 0, 0};
  for (int month = 1; month <= 12; ++month) {
    for (int day = 0; day <= 32; ++day) {
      const std::string name = formatDayKey(2009, month, day) + ".tmp";
      shop.files.files[joinPath(ShopWorld::path("temp"), name)].content = "";
    }
  }
  ASSERT_EQ(shop.start("-INIT"), StartOutcome::kPanel);
  shop.form().keyEvent(1);
  send(shop);
  EXPECT_EQ(written(shop, ".txt").size(), 2 * 372U);
}

TEST(BulkExport, ItsResultIsThatOfTheLastDelivery) {
  const struct {
    std::vector<std::string> days;
    std::string refused;
    std::string status;
  } cases[] = {
      {{"090101", "090102"}, "00345_090101.txt", "接続完了"},
      {{"090101", "090102"}, "00345_090102.txt", "接続できませんでした"},
      {{}, "", "接続できませんでした"},
  };
  for (const auto& c : cases) {
    ShopWorld shop;
    for (const std::string& key : c.days) {
      shop.files.files[joinPath(ShopWorld::path("temp"), key + ".tmp")].content = "";
    }
    shop.files.unwritable.insert(ShopWorld::outPath(c.refused));
    ASSERT_EQ(shop.start("-INIT"), StartOutcome::kPanel);
    shop.form().keyEvent(1);
    EXPECT_EQ(send(shop), c.status) << c.refused;
  }
  for (const int shift : {0, 2, 3, 5}) {
    ShopWorld shop;
    ASSERT_EQ(shop.start("-INIT"), StartOutcome::kPanel);
    shop.form().keyEvent(shift);
    EXPECT_EQ(send(shop), "接続完了") << "only Shift alone is the bulk export";
    EXPECT_TRUE(shop.files.exists(ShopWorld::outPath("00345_240115.txt")));
  }
}

}  // namespace
}  // namespace karvel
