#include <algorithm>
#include <tuple>

#include "desktop/desktop_fixture.h"
#include "form/keyboard.h"
#include "ui/ftp_form.h"
#include "ui/grp_form.h"
#include "ui/user_form.h"

namespace karvel {
namespace {

PixelRect common(const PixelRect& one, const PixelRect& other) {
  const int left = std::max(one.left, other.left);
  const int top = std::max(one.top, other.top);
  return {left, top, std::min(one.left + one.width, other.left + other.width) - left,
          std::min(one.top + one.height, other.top + other.height) - top};
}

bool overlap(const PixelRect& one, const PixelRect& other) {
  return common(one, other).width > 0 && common(one, other).height > 0;
}

/// Every form at several sizes of its text.
class Layout : public DesktopTest,
               public ::testing::WithParamInterface<std::tuple<const FormTable*, double>> {
 protected:
  Layout() {
    show(screen_);
    usual_ = look().place;
    user_.setTextSize(factor_);
  }

  Widget widget(const Control& control) const { return User::widget(screen_, control); }
  Sight look() const { return User::look(User::window(screen_)); }
  Sight look(const Control& control) const { return User::look(widget(control)); }

  const double factor_ = std::get<double>(GetParam());
  Form screen_{*std::get<const FormTable*>(GetParam())};
  PixelRect usual_;
};

TEST_P(Layout, EveryControlIsThereWithNothingCutAndNothingOverlapped) {
  const std::vector<Control*> shown = stackingOrder(screen_);
  for (const auto& control : screen_.controls()) {
    const bool isShown = std::find(shown.begin(), shown.end(), control.get()) != shown.end();
    EXPECT_EQ(look(*control).isShown, isShown);
  }
  for (const Control* control : shown) {
    const ControlRow& row = control->row();
    SCOPED_TRACE(std::string(row.name) + " " + std::to_string(row.index));
    const Sight seen = look(*control);
    EXPECT_EQ(seen.isEnabled, control->enabled());
    EXPECT_EQ(seen.toolTip, row.toolTip) << "a label's text is its tip when it is too long";
    if (row.kind == ControlKind::kTextBox) {
      EXPECT_EQ(seen.spokenName, row.accessibleName);
    }
    EXPECT_LE(seen.needed.x, seen.place.width);
    EXPECT_LE(seen.needed.y, seen.place.height);
    EXPECT_EQ(common(look().place, seen.place), seen.place) << "within the window";
    for (const Control* other : shown) {
      if (other == control || other->row().kind == ControlKind::kFrame) continue;
      const PixelRect place = look(*other).place;
      const bool framed = row.kind == ControlKind::kFrame && common(seen.place, place) == place;
      EXPECT_TRUE(framed || !overlap(seen.place, place)) << other->row().name;
    }
  }
}

TEST_P(Layout, TheFocusWalksInTabOrder) {
  for (const auto& control : screen_.controls()) {
    control->setEnabled(true);
    if (control->row().kind == ControlKind::kOptionButton) control->select();
  }
  const Control* const first = nextTabStop(screen_, nullptr);
  user_.focus(widget(*first));
  const Control* focused = first;
  do {
    user_.press(Key::kTab);
    focused = nextTabStop(screen_, focused);
    EXPECT_EQ(User::focused(), widget(*focused)) << focused->row().name << focused->row().index;
  } while (focused != first);
}

TEST_P(Layout, TheWindowGrowsWithItsText) {
  const auto [left, top, width, height] = look().place;
  EXPECT_NEAR(width, usual_.width * factor_, 0.1 * width);
  EXPECT_NEAR(height, usual_.height * factor_, 0.1 * height);
  EXPECT_EQ(look().canBeMinimized, screen_.table().canMinimize);
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
