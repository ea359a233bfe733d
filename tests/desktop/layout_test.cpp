#include <map>
#include <set>
#include <tuple>

#include "desktop/desktop_fixture.h"
#include "ui/ftp_form.h"
#include "ui/grp_form.h"
#include "ui/user_form.h"

namespace karvel {
namespace {

/// Every form at several sizes of its text.
class Layout : public DesktopTest,
               public ::testing::WithParamInterface<std::tuple<const FormTable*, double>> {
 protected:
  Layout() {
    show(screen_);
    usual_ = User::place(User::window(screen_)).size();
    user_.setTextSize(factor_);
  }

  Widget widget(const Control& control) const { return User::widget(screen_, control); }

  std::vector<const Control*> shown() const {
    std::vector<const Control*> controls;
    for (const auto& control : screen_.controls()) {
      if (!control->has(ControlRow::kHidden)) controls.push_back(control.get());
    }
    return controls;
  }

  static std::string describe(const Control& control) {
    return std::string(control.row().name) + " " + std::to_string(control.row().index);
  }

  const double factor_ = std::get<double>(GetParam());
  Form screen_{*std::get<const FormTable*>(GetParam())};
  Size usual_;
};

TEST_P(Layout, EveryControlIsThereAsItsRowSays) {
  for (const auto& control : screen_.controls()) {
    SCOPED_TRACE(describe(*control));
    const Widget there = widget(*control);
    EXPECT_EQ(User::isShown(there), !control->has(ControlRow::kHidden));
    if (!User::isShown(there)) continue;
    EXPECT_EQ(User::isEnabled(there), control->enabled());
    EXPECT_EQ(User::toolTip(there), control->row().toolTip);
    if (control->row().kind != ControlKind::kTextBox) continue;
    EXPECT_EQ(User::spokenName(there), control->row().accessibleName);
  }
}

TEST_P(Layout, NoCaptionIsCut) {
  for (const Control* control : shown()) {
    SCOPED_TRACE(describe(*control));
    const Size needed = User::needed(widget(*control));
    const Size there = User::place(widget(*control)).size();
    EXPECT_LE(needed.width, there.width);
    EXPECT_LE(needed.height, there.height);
  }
}

TEST_P(Layout, NothingOverlapsOrLeavesTheWindow) {
  struct Shown {
    const Control* control;
    Place place;
  };
  std::vector<Shown> all;
  for (const Control* control : shown()) all.push_back({control, User::place(widget(*control))});
  const Place inside = User::place(User::window(screen_));
  for (auto one = all.begin(); one != all.end(); ++one) {
    SCOPED_TRACE(describe(*one->control));
    EXPECT_TRUE(inside.contains(one->place));
    for (auto other = one + 1; other != all.end(); ++other) {
      const bool framed =
          one->control->row().kind == ControlKind::kFrame && one->place.contains(other->place);
      EXPECT_TRUE(framed || !one->place.overlaps(other->place)) << describe(*other->control);
    }
  }
}

TEST_P(Layout, TheFocusWalksInTabOrder) {
  std::set<std::string> groups;
  std::map<int, const Control*> expected;
  for (const auto& control : screen_.controls()) {
    const int order = control->row().tabOrder;
    if (order == ControlRow::kNoTab) continue;
    control->setEnabled(true);
    if (control->row().kind == ControlKind::kOptionButton) {
      // Of the options of a name the selected one alone.
      if (!groups.insert(control->row().name).second) continue;
      control->select();
    }
    expected[order] = control.get();
  }
  user_.focus(widget(*expected.begin()->second));
  for (const auto& [order, control] : expected) {
    EXPECT_EQ(User::focused(), widget(*control)) << describe(*control);
    user_.press(Key::kTab);
  }
  EXPECT_EQ(User::focused(), widget(*expected.begin()->second));
}

TEST_P(Layout, TheWindowGrowsWithItsTextAndByNothingElse) {
  const Widget there = User::window(screen_);
  const Size size = User::place(there).size();
  EXPECT_NEAR(size.width, usual_.width * factor_, 0.1 * size.width);
  EXPECT_NEAR(size.height, usual_.height * factor_, 0.1 * size.height);
  EXPECT_FALSE(User::look(there).canBeResized);
  EXPECT_EQ(User::look(there).canBeMinimized, screen_.table().canMinimize);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, Layout,
    ::testing::Combine(::testing::Values(&kFtpFormTable, &kGrpFormTable, &kUserFormTable),
                       ::testing::Values(1.0, 1.5, 2.0)),
    [](const auto& test) {
      return std::string(std::get<const FormTable*>(test.param)->name) + "At" +
             std::to_string(static_cast<int>(100 * std::get<double>(test.param))) + "Percent";
    });

}  // namespace
}  // namespace karvel
