#include <gtest/gtest.h>

#include <algorithm>

#include "fakes/shop_world.h"

// A whole life of the program, once for each of its calls that can fail: that one fails.

namespace karvel {
namespace {

class FailingShop : public ShopWorld {
 public:
  explicit FailingShop(bool toSite) : toSite_(toSite) {
    if (toSite) useOwnSite();
    (toSite ? internet.folders["/"][kTable] : files.files[outPath(kTable)].content) = kOld;
  }

  /// True when there was such a call.
  bool sendWithFault(int call) {
    int calls = 0;
    files.fault = [&] { return ++calls == call; };
    internet.fault = [&](const std::string&) {
      return ++calls == call ? std::optional(FakeInternet::Failure{12002}) : std::nullopt;
    };
    if (start() == StartOutcome::kResident) form().MyMenu_Send.onClick();
    files.fault = nullptr;
    internet.fault = nullptr;
    return calls >= call;
  }
  /// Never a part of a table, and a new one where the run says so.
  void expectTrueReport() {
    const auto table = delivered(kTable);
    EXPECT_TRUE(!table || table == kOld || isWhole(table));
    EXPECT_TRUE(form().SndNG || isWhole(table));
    EXPECT_EQ(desktop.tray, form().SndNG ? TrayImage::kFailure : TrayImage::kNormal);
    EXPECT_TRUE(desktop.messageBoxes.empty());
    EXPECT_LE(internet.openHandles, 1) << "but for one that cannot be closed";
  }
  void expectNextRunHeals() {
    ASSERT_EQ(start(), StartOutcome::kResident);
    form().MyMenu_Send.onClick();
    EXPECT_FALSE(form().SndNG);
    EXPECT_TRUE(isWhole(delivered(kTable)) && delivered("1200345.inf"));
    for (const char* temporary :
         {"00345.part", "1200345.part", "00345_240115.xxx", "1200345.xxx"}) {
      EXPECT_FALSE(delivered(temporary)) << temporary;
    }
    EXPECT_EQ(own(toSite_ ? "FTP CHKF" : "FTP CHKC"), "1");
    EXPECT_EQ(own("FTP CODE") + own("GRUP NAME") + own("FTP EXIT"), "00345表町0");
    desktop.endSession();
    for (const auto& [path, file] : files.files) {
      EXPECT_FALSE(path.starts_with(kFolder) && (path.ends_with(".txt") || path.ends_with(".inf")));
    }
  }

 private:
  static constexpr const char* kTable = "00345_240115.txt";
  static constexpr const char* kOld = "old";

  static bool isWhole(const std::optional<std::string>& table) {
    return table && std::ranges::count(*table, '\n') == 2 && table->ends_with("\t0\r\n");
  }
  std::optional<std::string> delivered(const std::string& name) {
    if (!toSite_) return files.contentOf(outPath(name));
    const FakeInternet::Folder& site = internet.folders["/"];
    return site.contains(name) ? std::optional(site.at(name)) : std::nullopt;
  }

  bool toSite_;
};

class FailingCalls : public ::testing::TestWithParam<bool> {};

TEST_P(FailingCalls, AreReportedTrulyAndHealInTheNextRun) {
  int call = 0;
  for (bool reached = true; reached && !HasFailure();) {
    SCOPED_TRACE("call " + std::to_string(++call));
    FailingShop shop(GetParam());
    reached = shop.sendWithFault(call);
    shop.expectTrueReport();
    shop.expectNextRunHeals();
  }
  std::cout << call - 1 << " calls, each failed once\n";
  EXPECT_GT(call, 15);
}

INSTANTIATE_TEST_SUITE_P(Destinations, FailingCalls, ::testing::Bool());

}  // namespace
}  // namespace karvel
