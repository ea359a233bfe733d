#include <gtest/gtest.h>

#include <random>

#include "fakes/shop_world.h"
#include "text/code_page.h"
#include "text/path.h"
#include "unit/reception_model.h"

namespace karvel {
namespace {

// Random shops, after whose runs the destination must hold what a slow model says, byte for byte.

using Folder = FakeInternet::Folder;
using reception_model::figuresOf;
using Strings = reception_model::Strings;

class RandomShop : public ::testing::Test, protected ShopWorld {
 protected:
  int below(int limit) { return static_cast<int>(random_() % unsigned(limit)); }
  std::string oneOf(const Strings& values) {
    return values[static_cast<std::size_t>(below(static_cast<int>(values.size())))];
  }
  std::string number(int limit) {
    const std::string digits = std::to_string(below(limit));
    return digits.size() < 2 ? "0" + digits : digits;
  }

  std::string time() {
    const std::string good = number(24) + ":" + number(60) + ":" + number(60);
    switch (below(14)) {
      case 0:
        return number(32) + ":" + number(66) + ":" + number(66);
      case 1:
        return oneOf({"", "xx", "9:05:00", "9:5", "009:00:00", "010:00:00", "1x:00:00", "24:00:00",
                      "09:10:", "12:00:0x", "08:59:59", "09:00:00", "&H:00:00", "1.:00:00",
                      "-1:00:00", "10：00：00", "１２：００：０", "１２：００：００",
                      "１２：００：００秒"});
      case 2:
        return std::to_string(below(24)) + ":" + std::to_string(below(60));
      case 3:
        return " " + good + "  ";
      case 4: {  // any byte in a time, or a neighbour of the digits
        std::string odd = good;
        odd[std::size_t(below(8))] = below(2) == 0 ? char(1 + below(127)) : "/:;"[below(3)];
        return odd.find_first_of("\t\n\r") == std::string::npos ? odd : good;
      }
      default:
        // Close together in the morning, so that the intervals between the calls count.
        return below(2) == 0 ? good : "10:" + number(60) + ":" + number(60);
    }
  }
  std::string receptions() {
    std::string text;
    // Few calls at the edges of what counts as an interval, or many anywhere.
    const bool edges = below(3) == 0;
    for (int lines = below(edges ? 5 : 25); lines > 0; --lines) {
      Strings fields(11);
      fields[0] = oneOf({"", "1", "表ソ能", "\x01 x"});
      fields[3] = oneOf({"", "右\x08", "\x0B"});
      fields[1] = time();
      fields[2] = edges ? oneOf({"10:00:00", "10:00:01", "10:59:59", "11:00:00", "11:00:01",
                                 "00:00:00", "00:40:00"})
                        : time();
      if (edges && below(4) == 0) fields[1] = fields[2];
      fields[4] = oneOf({"済", "1", " x ", "0", "", "  "});
      fields[5] = oneOf({"", "", "m", " ", "ﾒｰﾙ"});
      fields[7] = oneOf({"", "0", "1", " 3 ", "-1", "0.5", "x1", "2x", "&H1", "１"});
      fields[10] = oneOf({"", "予約"});
      if (below(12) == 0) fields.resize(static_cast<std::size_t>(below(14)));
      for (std::size_t i = 0; i < fields.size(); ++i) text += (i == 0 ? "" : "\t") + fields[i];
      if (lines > 1 || below(4) != 0) text += oneOf({"\r\n", "\r\n", "\n"});
    }
    return text;
  }
  /// Lines are cut eight bytes at once, which may take a byte for a TAB that differs from it in one
  /// bit, or by one.
  std::string withStrayBytes(std::string bytes) {
    const std::string likely = "\t\x08\x0A\x0B\x01";
    for (int strays = below(3) == 0 ? 40 : 0; strays > 0 && !bytes.empty(); --strays) {
      std::string changed = bytes;
      changed[std::size_t(below(int(bytes.size())))] =
          below(2) == 0 ? static_cast<char>(below(256)) : likely[std::size_t(below(5))];
      const bool keepsCharacters = toCodePage932(fromCodePage932(changed)) == changed;
      if (keepsCharacters) bytes = changed;
    }
    return bytes;
  }
  /// Fills the desks of a day and says what its rows must be.
  std::string rowsOfDay(const std::string& key, const std::string& date, const Strings& names) {
    std::string rows;
    for (std::size_t desk = 1; desk <= names.size(); ++desk) {
      const std::string number = std::to_string(desk);
      const std::string bytes = below(5) == 0 ? "" : withStrayBytes(toCodePage932(receptions()));
      files.files[joinPath(path("temp"), key + "_" + number + ".tmp")].content = bytes;
      rows += date + "\t" + formatTime(clock.time) + "\t" + own("GRUP CODE") + "\t" +
              own("GRUP NAME") + "\t" + own("FTP CODE") + "\t" +
              ticket("KARVEL1 INFOMATION", "USER NAME") + "\t" + number + "\t" + names[desk - 1] +
              figuresOf(fromCodePage932(bytes)) + "\r\n";
    }
    return rows;
  }

  /// Lays the file of a previous identifier into the destination and says what of it and of the
  /// shop information must be there after a run.
  void addShopInfo(Folder& expected) {
    const auto isPlain = [](const std::string& name) {
      return name.find_first_of("/\\:") == std::string::npos;
    };
    const std::string identifier = own("GRUP CODE") + own("FTP CODE");
    const bool valid =
        characterCount(identifier) == 7 && numericValue(identifier) > 0 && isPlain(identifier);
    const std::string previous = oneOf({"", "1200344", "x/y", "x\\y", "x:y", "..", identifier});
    const std::string file = previous + ".inf";
    const bool readOnly = !site_ && below(4) == 0;
    files.unwritable.clear();
    if (below(4) == 0) files.unwritable = {path(identifier + ".inf")};
    setOwn("GRUP BACK", previous);
    setTicket("FTP INFOMATION", "FTP GRUP", "web1");
    setTicket("FTP INFOMATION", "FTP USER", "user1");
    files.files[path(file)].content = "not sent";
    if (site_) {
      internet.folders["/"][file] = "old";
    } else {
      files.files[outPath(file)] = {"old", readOnly};
    }

    const bool other = previous != identifier;
    const bool removed = valid && other && previous != "" && isPlain(previous) && !readOnly;
    if (!removed) expected[file] = "old";
    if (valid && files.unwritable.empty() && (other || !readOnly)) {
      expected[identifier + ".inf"] =
          own("GRUP CODE") + "\t" + own("FTP CODE") + "\t" + own("GRUP NAME") + "\t" +
          ticket("KARVEL1 INFOMATION", "USER NAME") + "\tweb1\tuser1\t\t\t\r\n";
    }
    identifier_ = valid ? identifier : previous;
  }
  /// What has come into the destination.
  Folder delivered() {
    Folder delivered;
    if (site_) delivered = internet.folders["/"];
    for (const auto& [path, file] : files.files) {
      if (path.starts_with(outPath(""))) delivered[path.substr(outPath("").size())] = file.content;
    }
    for (auto& [name, content] : delivered) content = fromCodePage932(content);
    return delivered;
  }

  bool site_ = false;       ///< the destination; otherwise the output folder
  std::string identifier_;  ///< that must be stored after the run
  std::mt19937 random_{20240115};
  const std::string kHeader =
      "日付\t時間\tグループNo\tグループ名\t店舗No\t店舗名\t受付No\t受付名\t処理済\t未処理\tメール\t"
      "予約数\t～09時\t09時～\t11時～\t13時～\t15時～\t17時～\t19時～\t21時～\t平均(分)\t最長(分)\t"
      "処理(分)\r\n";
};

TEST_F(RandomShop, DeliversWhatTheModelSays) {
  const std::pair<const char*, std::size_t> lastDesks[] = {
      {"", 1},  {"0", 1}, {"1", 2},   {"2.6", 4}, {"3x", 4}, {" 4", 5},
      {"5", 6}, {"6", 1}, {"5.1", 1}, {"-1", 1},  {"x", 1},  {"1e9", 1}};
  const Strings oddDays{"x/y", "x\\y", "x:y", "..", ""};
  for (int round = 0; round < 250; ++round) {
    files.files.clear();
    clock.time = {2009 + below(3), 1 + below(12), 1 + below(28), below(24), below(60), below(60)};
    const bool oddDay = below(5) == 0;
    const std::string today = oddDay ? oneOf(oddDays) : "08" + number(13) + number(32);
    setTicket("USER INFOMATION", "TODAY", today);
    setTicket("KARVEL1 INFOMATION", "USER NAME", oneOf({"ソレイユ薬局", "", "a b"}));
    const auto& [lastDesk, desks] = lastDesks[below(std::size(lastDesks))];
    setTicket("TASHIN INFOMATION", "SHINSATSU", lastDesk);
    Strings names(desks);
    for (std::size_t i = 0; i < names.size(); ++i) {
      names[i] = oneOf({"受付", "", "表1"});
      setTicket("TASHIN INFOMATION", "TASHIN" + std::to_string(i + 1), names[i]);
    }
    setOwn("FTP CODE", oneOf({"00345", "7x", "99999999", "&H1"}));
    setOwn("GRUP CODE", oneOf({"12", "", "9999", "ab", "1/"}));
    setOwn("GRUP NAME", oneOf({"表町", "", "るりはなリンク"}));
    setOwn("FTP TYPE", "0");
    setOwn("OUT FOLD", kOutFolder);
    site_ = below(3) == 0;
    if (site_) useOwnSite();
    internet.folders["/"].clear();
    const std::string shop = own("FTP CODE");
    for (const std::string& outside : {shop + "_x", std::string("1")}) {
      files.folders.insert({path(outside), outPath(outside)});
    }

    Folder expected;
    const bool bulk = below(3) == 0;
    if (bulk) {
      for (int days = below(4); days > 0; --days) {
        const int year = 8 + below(5);
        const std::string month = number(14);
        const std::string day = number(33);
        const std::string key = (year < 10 ? "0" : "") + std::to_string(year) + month + day;
        files.files[joinPath(path("temp"), key + ".tmp")] = {};
        const bool asked = year >= 9 && 2000 + year <= clock.time.year && month >= "01" &&
                           month <= "12" && day >= "01" && day <= "31";
        const std::string date = "20" + key.substr(0, 2) + "/" + month + "/" + day;
        const std::string rows = rowsOfDay(key, date, names);
        if (asked) expected[shop + "_" + key + ".txt"] = kHeader + rows;
      }
    } else if (!oddDay || today.empty()) {
      expected[shop + "_" + today + ".txt"] =
          kHeader + rowsOfDay(today, formatDate(clock.time), names);
    }
    const bool sent = !expected.empty();
    addShopInfo(expected);

    ASSERT_EQ(start("-INIT"), StartOutcome::kPanel);
    form().keyEvent(bulk ? FtpForm::kShiftAlone : 0);
    form().Command1[FtpForm::Command::kTest].click();
    SCOPED_TRACE("round " + std::to_string(round));
    EXPECT_EQ(form().MsgLabel.caption(), sent ? "接続完了" : "接続できませんでした");
    EXPECT_EQ(own("GRUP BACK"), identifier_);
    ASSERT_EQ(delivered(), expected);
  }
}

}  // namespace
}  // namespace karvel
