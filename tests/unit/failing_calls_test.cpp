#include <gtest/gtest.h>

#include <algorithm>

#include "fakes/shop_world.h"

// A whole life of the program, once for each of its calls that can fail: that one fails.

namespace karvel {
namespace {

constexpr const char* kTable = "00345_240115.txt";
constexpr const char* kShopInfo = "1200345.inf";

class FailingShop : public ShopWorld {
 public:
  explicit FailingShop(bool toSite) : toSite_(toSite) {
    if (toSite) useOwnSite();
    if (toSite) {
      internet.folders["/"][kTable] = kOld;
    } else {
      files.files[outPath(kTable)].content = kOld;
    }
  }

  void sendWithFault(int call) {
    files.fault = [this, call] { return ++calls_ == call; };
    internet.fault = [this, call](const std::string&) {
      return ++calls_ == call ? std::optional(FakeInternet::Failure{12002}) : std::nullopt;
    };
    if (start() == StartOutcome::kResident) form().MyMenu_Send.onClick();
    files.fault = nullptr;
    internet.fault = nullptr;
  }
  [[nodiscard]] int calls() const { return calls_; }

  /// Never a part of a table, and a new one where the run says so.
  void expectTrueReport() {
    const auto there = delivered();
    const auto table = there.find(nameThere(kTable));
    const bool isNew = table != there.end() && isWhole(table->second);
    EXPECT_TRUE(table == there.end() || isNew || table->second == kOld);
    EXPECT_TRUE(form().SndNG || isNew);
    EXPECT_EQ(desktop.tray, form().SndNG ? TrayImage::kFailure : TrayImage::kNormal);
    EXPECT_TRUE(desktop.messageBoxes.empty());
    EXPECT_LE(internet.openHandles, 1) << "but for one that cannot be closed";
  }
  void expectNextRunHeals() {
    ASSERT_EQ(start(), StartOutcome::kResident);
    form().MyMenu_Send.onClick();
    EXPECT_FALSE(form().SndNG);
    const auto there = delivered();
    ASSERT_EQ(there.size(), 2U);
    EXPECT_TRUE(isWhole(there.at(nameThere(kTable))) && there.contains(nameThere(kShopInfo)));
    EXPECT_EQ(own(toSite_ ? "FTP CHKF" : "FTP CHKC"), "1");
    EXPECT_EQ(own("FTP CODE") + own("GRUP NAME") + own("FTP EXIT"), "00345表町0");
    desktop.endSession();
    for (const auto& [path, file] : files.files) {
      EXPECT_FALSE(path.starts_with(kFolder) && (path.ends_with(".txt") || path.ends_with(".inf")));
    }
  }

 private:
  static constexpr const char* kOld = "old";

  static bool isWhole(const std::string& table) {
    return std::ranges::count(table, '\n') == 2 && table.ends_with("\t0\r\n");
  }
  [[nodiscard]] std::string nameThere(const char* name) const {
    return toSite_ ? name : outPath(name);
  }
  /// The destination's files: of the site by name, of the folder by path.
  FakeInternet::Folder delivered() const {
    FakeInternet::Folder there;
    if (toSite_) return internet.folders.at("/");
    for (const auto& [path, file] : files.files) {
      if (path.starts_with(kOutFolder)) there[path] = file.content;
    }
    return there;
  }

  bool toSite_;
  int calls_ = 0;
};

class FailingCalls : public ::testing::TestWithParam<bool> {};

TEST_P(FailingCalls, AreReportedTrulyAndHealInTheNextRun) {
  int call = 0;
  for (bool reached = true; reached && !HasFailure();) {
    SCOPED_TRACE("call " + std::to_string(++call));
    FailingShop shop(GetParam());
    shop.sendWithFault(call);
    reached = shop.calls() >= call;
    shop.expectTrueReport();
    shop.expectNextRunHeals();
  }
  std::cout << call - 1 << " calls, each failed once\n";
  EXPECT_GT(call, 15);
}

INSTANTIATE_TEST_SUITE_P(Destinations, FailingCalls, ::testing::Bool());

}  // namespace
}  // namespace karvel
