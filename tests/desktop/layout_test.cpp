#include <algorithm>
#include <tuple>

#include "desktop/desktop_fixture.h"
#include "form/keyboard.h"
#include "ui/ftp_form.h"
#include "ui/grp_form.h"
#include "ui/user_form.h"

namespace karvel {
namespace {

bool contains(const PixelRect& outer, const PixelRect& inner) {
  return outer.left <= inner.left && outer.top <= inner.top &&
         outer.left + outer.width >= inner.left + inner.width &&
         outer.top + outer.height >= inner.top + inner.height;
}

bool overlap(const PixelRect& one, const PixelRect& other) {
  return one.left < other.left + other.width && other.left < one.left + one.width &&
         one.top < other.top + other.height && other.top < one.top + one.height;
}

/// Every form at several sizes of its text.
class Layout : public DesktopTest,
               public ::testing::WithParamInterface<std::tuple<const FormTable*, double>> {
 protected:
  Layout() {
    show(screen_);
    usual_ = User::place(User::window(screen_));
    user_.setTextSize(factor_);
  }

  Widget widget(const Control& control) const { return User::widget(screen_, control); }

  const double factor_ = std::get<double>(GetParam());
  Form screen_{*std::get<const FormTable*>(GetParam())};
  PixelRect usual_;
};

TEST_P(Layout, EveryControlIsThereWithNothingCutAndNothingOverlapped) {
  const std::vector<Control*> shown = stackingOrder(screen_);
  const PixelRect inside = User::place(User::window(screen_));
  for (const auto& hidden : screen_.controls()) {
    const bool isShown = std::find(shown.begin(), shown.end(), hidden.get()) != shown.end();
    EXPECT_EQ(User::isShown(widget(*hidden)), isShown);
  }
  for (const Control* control : shown) {
    const ControlRow& row = control->row();
    SCOPED_TRACE(std::string(row.name) + " " + std::to_string(row.index));
    const Widget there = widget(*control);
    EXPECT_EQ(User::isEnabled(there), control->enabled());
    EXPECT_EQ(User::toolTip(there), row.toolTip);
    if (row.kind == ControlKind::kTextBox) {
      EXPECT_EQ(User::spokenName(there), row.accessibleName);
    }
    const PixelRect place = User::place(there);
    EXPECT_LE(User::needed(there).x, place.width);
    EXPECT_LE(User::needed(there).y, place.height);
    EXPECT_TRUE(contains(inside, place));
    for (const Control* other : shown) {
      if (other == control || other->row().kind == ControlKind::kFrame) continue;
      const PixelRect another = User::place(widget(*other));
      const bool framed = row.kind == ControlKind::kFrame && contains(place, another);
      EXPECT_TRUE(framed || !overlap(place, another)) << other->row().name;
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
  const PixelRect place = User::place(User::window(screen_));
  EXPECT_NEAR(place.width, usual_.width * factor_, 0.1 * place.width);
  EXPECT_NEAR(place.height, usual_.height * factor_, 0.1 * place.height);
  EXPECT_EQ(User::canBeMinimized(User::window(screen_)), screen_.table().canMinimize);
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
