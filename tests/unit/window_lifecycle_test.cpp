#include "shell/window_lifecycle.h"

#include <gtest/gtest.h>

#include "fakes/shop_world.h"
#include "text/path.h"

namespace karvel {
namespace {

using namespace std::chrono_literals;

class Lifecycle : public ::testing::Test, protected ShopWorld {};

TEST_F(Lifecycle, HasAnIconWithATipAndAMenu) {
  ASSERT_EQ(start(), StartOutcome::kResident);
  EXPECT_EQ(form().caption(), "");
  EXPECT_EQ(desktop.trayTip, "るりはなリンク集計管理");
  desktop.trayRightButtonUp();
  std::string captions;
  for (const MenuItem* item : desktop.openMenu) {
    captions += item->caption + (item->onClick ? "!|" : "|");
  }
  EXPECT_EQ(captions, "手動転送!|接続設定!|-|常駐停止!|");
  form().MyMenu_Init.onClick();
  EXPECT_EQ(form().caption(), "集計管理");
}

TEST_F(Lifecycle, EndsAfterTwoPausesWithoutItsWorkFiles) {
  const std::string kept[] = {path("a.csv"), joinPath(path("temp"), "b.txt"), outPath("c.txt")};
  for (const std::string& file : kept) files.files[file] = {};
  for (const bool resident : {false, true}) {
    start(resident ? "" : "-INIT");
    files.files[path("B.TXT")] = {};
    std::vector<std::chrono::milliseconds> pauses;
    desktop.onPending = [&, before = clock.slept] {
      pauses.push_back(clock.slept - before);
      EXPECT_EQ(form().visible(), pauses.back() == 0s) << "for a moment, when it comes back";
      EXPECT_TRUE(files.exists(path("B.TXT")));
      form().close();
    };
    form().close();
    desktop.onPending = nullptr;
    EXPECT_EQ(form().caption() == "集計管理", resident);
    if (resident) pauses.erase(pauses.begin());
    EXPECT_EQ(pauses, (std::vector<std::chrono::milliseconds>{1s, 2s}));
    EXPECT_FALSE(files.exists(path("B.TXT")));
    for (const std::string& file : kept) EXPECT_TRUE(files.exists(file)) << file;
  }
}

}  // namespace
}  // namespace karvel
