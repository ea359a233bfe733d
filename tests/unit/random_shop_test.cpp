#include <gtest/gtest.h>

#include <random>

#include "fakes/shop_world.h"
#include "text/code_page.h"
#include "text/path.h"
#include "unit/reception_model.h"

namespace karvel {
namespace {

// Random shops, whose delivered tables must equal those of a slow model of the figures byte for
// byte.

using reception_model::figuresOf;
using Strings = reception_model::Strings;

class RandomShop : public ::testing::Test, protected ShopWorld {
 protected:
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  template <typename T>
  T oneOf(const std::vector<T>& values) {
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
        return oneOf<std::string>({"", "xx", "9:05:00", "9:5", "009:00:00", "010:00:00", "1x:00:00",
                                   "24:00:00", "09:10:", "12:00:0x", "08:59:59", "09:00:00",
                                   "&H:00:00", "1.:00:00", "-1:00:00", "10：00：00",
                                   "１２：００：０", "１２：００：００", "１２：００：００秒"});
      case 2:
        return std::to_string(below(24)) + ":" + std::to_string(below(60));
      case 3:
        return " " + good + "  ";
      case 4: {  // any single byte in a time, or another one left out
        std::string odd = good;
        odd[static_cast<std::size_t>(below(8))] = static_cast<char>(1 + below(127));
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
      fields[0] = oneOf<std::string>({"", "1", "表ソ能", "\x01 x"});
      fields[1] = time();
      fields[2] = edges ? oneOf<std::string>({"10:00:00", "10:00:01", "10:59:59", "11:00:00",
                                              "11:00:01", "00:00:00", "00:40:00"})
                        : time();
      fields[4] = oneOf<std::string>({"済", "1", " x ", "0", "", "  "});
      fields[5] = oneOf<std::string>({"", "", "m", " ", "ﾒｰﾙ"});
      fields[7] = oneOf<std::string>({"", "0", "1", " 3 ", "-1", "0.5", "x1", "2x", "&H1", "１"});
      fields[10] = oneOf<std::string>({"", "予約"});
      if (below(12) == 0) fields.resize(static_cast<std::size_t>(below(14)));
      for (std::size_t i = 0; i < fields.size(); ++i) text += (i == 0 ? "" : "\t") + fields[i];
      if (lines > 1 || below(4) != 0) text += oneOf<std::string>({"\r\n", "\r\n", "\n"});
    }
    return text;
  }
  /// Fills the desks of a day and says what its rows must be.
  std::string rowsOfDay(const std::string& key, const std::string& date, const Strings& names) {
    std::string rows;
    for (std::size_t desk = 1; desk <= names.size(); ++desk) {
      const std::string number = std::to_string(desk);
      const std::string text = below(5) == 0 ? "" : receptions();
      File& file = files.files[joinPath(path("temp"), key + "_" + number + ".tmp")];
      file.content = toCodePage932(text);
      rows += date + "\t" + formatTime(clock.time) + "\t" + own("GRUP CODE") + "\t" +
              own("GRUP NAME") + "\t" + own("FTP CODE") + "\t" +
              ticket("KARVEL1 INFOMATION", "USER NAME") + "\t" + number + "\t" + names[desk - 1] +
              figuresOf(text) + "\r\n";
    }
    return rows;
  }

  using File = FakeFiles::File;
  std::mt19937 random_{20240115};
  const std::string kHeader =
      "日付\t時間\tグループNo\tグループ名\t店舗No\t店舗名\t受付No\t受付名\t処理済\t未処理\tメール\t"
      "予約数"
      "\t～09時\t09時～\t11時～\t13時～\t15時～\t17時～\t19時～\t21時～\t平均(分)\t最長(分)\t処理("
      "分)"
      "\r\n";
};

TEST_F(RandomShop, HasTheTablesOfTheModel) {
  for (int round = 0; round < 250; ++round) {
    files.files.clear();
    clock.time = {2009 + below(3), 1 + below(12), 1 + below(28), below(24), below(60), below(60)};
    const std::string today = below(10) == 0 ? "" : "08" + number(13) + number(32);
    setTicket("USER INFOMATION", "TODAY", today);
    setTicket("KARVEL1 INFOMATION", "USER NAME", oneOf<std::string>({"ソレイユ薬局", "", "a b"}));
    const auto desks = oneOf<std::pair<std::string, std::size_t>>({{"", 1},
                                                                   {"0", 1},
                                                                   {"1", 2},
                                                                   {"2.6", 4},
                                                                   {"3x", 4},
                                                                   {" 4", 5},
                                                                   {"5", 6},
                                                                   {"6", 1},
                                                                   {"5.1", 1},
                                                                   {"-1", 1},
                                                                   {"x", 1},
                                                                   {"1e9", 1}});
    setTicket("TASHIN INFOMATION", "SHINSATSU", desks.first);
    Strings names(desks.second);
    for (std::size_t i = 0; i < names.size(); ++i) {
      names[i] = oneOf<std::string>({"受付", "", "表1"});
      setTicket("TASHIN INFOMATION", "TASHIN" + std::to_string(i + 1), names[i]);
    }
    setOwn("FTP CODE", oneOf<std::string>({"00345", "7x", "99999999", "&H1"}));
    setOwn("GRUP CODE", oneOf<std::string>({"12", "", "9999"}));
    setOwn("GRUP NAME", oneOf<std::string>({"表町", "", "るりはなリンク"}));
    setOwn("FTP TYPE", "0");
    setOwn("OUT FOLD", kOutFolder);

    std::map<std::string, std::string> expected;  // by name of the table
    const std::string shop = own("FTP CODE");
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
    } else {
      expected[shop + "_" + today + ".txt"] =
          kHeader + rowsOfDay(today, formatDate(clock.time), names);
    }

    ASSERT_EQ(start("-INIT"), StartOutcome::kPanel);
    form().keyEvent(bulk ? FtpForm::kShiftAlone : 0);
    form().Command1[FtpForm::Command::kTest].click();
    SCOPED_TRACE("round " + std::to_string(round));
    EXPECT_EQ(form().MsgLabel.caption(), expected.empty() ? "接続できませんでした" : "接続完了");
    std::map<std::string, std::string> delivered;
    for (const auto& [path, file] : files.files) {
      if (path.starts_with(kOutFolder) && path.ends_with(".txt")) {
        delivered[path.substr(std::string(kOutFolder).size() + 1)] = fromCodePage932(file.content);
      }
    }
    ASSERT_EQ(delivered, expected);
  }
}

}  // namespace
}  // namespace karvel
