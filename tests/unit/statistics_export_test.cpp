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

/// Deliveries to a folder or a site. What is delivered when all goes well is the random shop's.
class Export : public ::testing::Test, protected ShopWorld {
 protected:
  void open() { ASSERT_EQ(start("-INIT"), StartOutcome::kPanel); }
  /// Sends once from the panel; the status line says how it went.
  std::string send() {
    form().Command1[FtpForm::Command::kTest].onClick();
    return form().MsgLabel.caption();
  }

  const std::string kLocal = path("00345_240115.txt");
  const std::string kCopy = outPath("00345_240115.txt");
};

TEST_F(Export, FailsWhereItCannotDeliver) {
  files.folders.insert({"o", "1階〜"});  // U+301C, which the code page lacks
  files.files[kCopy] = {"old", true};
  for (const char* folder : {" o ", "1階〜", kOutFolder}) {
    open();
    form().Text1[Field::kOutputFolder].setText(folder);
    EXPECT_EQ(send(), kNotSent) << folder;
    EXPECT_FALSE(files.exists(kLocal));
  }
  files.files.erase(kCopy);
  files.files[kLocal].content = "of another day";
  files.files.erase(logPath());
  open();
  files.unwritable = {kLocal};
  EXPECT_EQ(send(), kNotSent);
  EXPECT_FALSE(files.exists(kCopy));
  std::string log;
  for (const char* message :
       {"------------------------ Snd Start", "----------------------------- Make_Csv2Send Start",
        "---------------------------------- Ftp_ShopFold Start",
        "---------------------------------- Ftp_ShopFold Exit",
        "----------------------------- Make_Csv2Send Exit", "------------------------ Snd Exit"}) {
    log += std::string("2024/01/15 09:05:07\tHS-FTP:") + message + "\r\n";
  }
  EXPECT_EQ(content(logPath()), log);
}

TEST_F(Export, TakesTheTimeOncePerTable) {
  setTicket("TASHIN INFOMATION", "SHINSATSU", "1");
  open();
  clock.secondsPerLook = 1;
  send();
  const std::string rows = content(kCopy).substr(content(kCopy).find('\n') + 1);
  const std::string second = rows.substr(rows.find('\n') + 1);
  EXPECT_EQ(rows.substr(0, 19), second.substr(0, 19));
}

TEST_F(Export, DropsUpToTwoSeparatorsAndReplacesACopy) {
  open();
  for (const std::size_t separators : {1U, 2U, 3U}) {
    files.files[kCopy].content = "old";
    form().Text1[Field::kOutputFolder].setText(" out" + std::string(separators, kSeparator) + " ");
    const auto before = clock.slept;
    EXPECT_EQ(send(), separators > 2 ? kNotSent : kSent);
    EXPECT_EQ(content(kCopy) == "old", separators > 2);
    EXPECT_GE(clock.slept - before, milliseconds(2 * 200)) << "each file gets time to settle";
  }
}

TEST_F(Export, CopiesUnderATemporaryNameWhereTheFolderTakesOne) {
  const std::string temporary = outPath("00345.part");
  files.files[temporary].content = "left by a killed run";
  open();
  EXPECT_EQ(send(), kSent);
  EXPECT_EQ(std::ranges::count(files.written, temporary), 1);
  EXPECT_FALSE(files.exists(temporary));

  files.unwritable = {temporary};
  files.files.erase(kCopy);
  EXPECT_EQ(send(), kSent);
  EXPECT_TRUE(files.exists(kCopy));
}

TEST_F(Export, InBulkHasTheResultOfTheLastDayDelivered) {
  clock.time.year = 2009;
  open();
  form().keyEvent(FtpForm::kShiftAlone);
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
