#include <gtest/gtest.h>

#include <array>
#include <string>

#include "app/headless_desktop.h"
#include "fakes/fake_desktop.h"
#include "form/control_rows.h"
#include "form/keyboard.h"
#include "form/layout.h"
#include "form/text_entry.h"

namespace karvel {
namespace {

constexpr std::array kControls{
    rows::decoration(ControlKind::kFrame, "Frame", {}),
    rows::label(0, "", {}),
    rows::textBox(0, "", {}, 1),
    rows::option("A", 0, "", {}, 2),
    rows::option("B", 0, "", {}, 5),
    rows::option("A", 1, "", {}, 3),
    rows::option("A", 2, "", {}, 4),
    rows::button("OK", 0, "", {}, 6, ControlRow::kDefaultButton),
    rows::button("Cancel", 0, "", {}, 0, ControlRow::kCancelButton),
    rows::hidden(rows::textBox(1, "", {}, 7)),
};
const FormTable kTable{"Form", "form", 100, 50, true, kControls};

class FormRules : public ::testing::Test {
 protected:
  Control& at(const char* name, int index = 0) { return form_.control(name, index); }
  static std::string names(const std::vector<Control*>& controls) {
    std::string all;
    for (const Control* control : controls) all += std::string(control->row().name) + " ";
    return all;
  }

  Form form_{kTable};
};

TEST(TextEntry, KeepsWhatTheRowAllowsAndOneLineHolds) {
  const ControlRow any{};
  const ControlRow five{.style = ControlRow::kDigitsOnly, .maxLength = 5};
  const ControlRow eight{.maxLength = 8};
  const struct {
    const ControlRow& row;
    std::size_t staying;
    const char* inserted;
    const char* kept;
  } cases[] = {
      {five, 0, "12a4１/09:", "12409"},
      {five, 2, "87654", "876"},
      {five, 7, "8", ""},
      {any, 900, "a\tb\r\nc\u2028\u2029\u0085\x7F\u00A0d\u2030", "abc\u00A0d\u2030"},
      {eight, 2, "𠮷野家𠮷野家𠮷野家", "𠮷野家𠮷野家"},
  };
  for (const auto& c : cases) EXPECT_EQ(acceptedInsertion(c.row, c.inserted, c.staying), c.kept);
}

TEST_F(FormRules, AnEnteredFieldKeepsItsSelectionThroughTheClick) {
  Control& text = at("Text1");
  TextBoxFocus focus(text);
  int entered = 0;
  text.onFocus = [&] {
    ++entered;
    text.setSelection(0, 4);
  };
  focus.arrive(true);
  EXPECT_TRUE(text.takeSelectionRequest());
  EXPECT_FALSE(text.takeSelectionRequest());
  focus.endClick(false);
  EXPECT_TRUE(text.takeSelectionRequest());
  focus.endClick(false);
  EXPECT_FALSE(text.takeSelectionRequest()) << "a later click";
  focus.leave(true);
  focus.arrive(false);
  EXPECT_EQ(entered, 1) << "it has come back with its window";
  focus.leave(false);
  focus.arrive(true);
  EXPECT_EQ(entered, 2);
  EXPECT_TRUE(text.takeSelectionRequest());
  focus.endClick(true);
  EXPECT_FALSE(text.takeSelectionRequest()) << "the user has selected something";
}

TEST_F(FormRules, TheKeyboardGoesByTabOrderAndEntersOptionsAtTheSelectedOne) {
  EXPECT_EQ(names(stackingOrder(form_)), "Cancel Label1 Text1 A A A B OK Frame ");
  EXPECT_EQ(nextTabStop(form_, nullptr), &at("Cancel"));
  EXPECT_EQ(nextTabStop(form_, &at("OK")), &at("Cancel"));
  EXPECT_EQ(nextTabStop(form_, &at("Text1")), &at("A", 0)) << "none is selected";
  at("A", 2).select();
  EXPECT_EQ(nextTabStop(form_, &at("Text1")), &at("A", 2));
  at("A", 2).setEnabled(false);
  EXPECT_EQ(nextTabStop(form_, &at("Text1")), &at("B", 0));
}

TEST_F(FormRules, AnArrowKeyMovesWithinTheOptionsOfAName) {
  EXPECT_EQ(neighbouringOption(form_, at("A", 0), -1), &at("A", 2));
  at("A", 1).setEnabled(false);
  EXPECT_EQ(neighbouringOption(form_, at("A", 0), 1), &at("A", 2));
  EXPECT_EQ(neighbouringOption(form_, at("B", 0), 1), &at("B", 0));
}

TEST_F(FormRules, AClickChoosesAnOptionOnce) {
  int clicks = 0;
  at("A", 1).onClick = [&clicks] { ++clicks; };
  at("A", 1).setEnabled(false);
  at("A", 1).click();
  EXPECT_FALSE(at("A", 1).selected());
  at("A", 1).setEnabled(true);
  for (int i = 0; i < 2; ++i) at("A", 1).click();
  EXPECT_TRUE(at("A", 1).selected());
  EXPECT_EQ(clicks, 1);
}

TEST_F(FormRules, EscapePressesTheCancelButtonAndAKeyThatIsHeldDownNone) {
  EXPECT_EQ(answeredBy(form_, AnswerKey::kEscape, false, &at("OK")), &at("Cancel"));
  EXPECT_EQ(answeredBy(form_, AnswerKey::kEnter, true, &at("OK")), nullptr);
}

TEST_F(FormRules, ACommandHasTheFocusAgainAfterItsRunUnlessTheUserHasTurnedAway) {
  FocusKeeper keeper(form_);
  Control& cancel = at("Cancel");
  Control& text = at("Text1");
  for (const bool userActs : {false, true}) {
    cancel.setEnabled(false);
    EXPECT_EQ(keeper.afterChange(cancel, &cancel), &text);
    text.setEnabled(false);
    EXPECT_EQ(keeper.afterChange(text, &text), &at("A", 0));
    if (userActs) keeper.userActs();
    text.setEnabled(true);
    EXPECT_EQ(keeper.afterChange(text, &at("A", 0)), nullptr);
    cancel.setEnabled(true);
    EXPECT_EQ(keeper.afterChange(cancel, &at("A", 0)), userActs ? nullptr : &cancel);
    EXPECT_EQ(keeper.afterChange(cancel, &cancel), nullptr);
  }
}

TEST(Layout, EdgesThatShareACoordinateShareThePixel) {
  const DialogUnits units(5.5, 13);
  EXPECT_EQ(units.rect({3, 5, 10, 7}), (PixelRect{4, 8, 14, 12}));
  EXPECT_EQ(units.rect({13, 12, 10, 8}).left, 4 + 14);
}

TEST(Layout, AWindowAppearsInTheMiddleAndWithItsTitleInReach) {
  const PixelRect usable{0, 30, 1000, 700};
  EXPECT_EQ(firstPlace({0, 0, 400, 300}, usable, usable), (PixelPoint{300, 230}));
  EXPECT_EQ(firstPlace({0, 0, 400, 300}, {900, 600, 200, 200}, usable), (PixelPoint{600, 430}));
  EXPECT_EQ(firstPlace({0, 0, 1200, 900}, usable, usable), (PixelPoint{0, 30}));
}

TEST_F(FormRules, WithoutADisplayAFormIsMinimisedAndADialogClosedAtOnce) {
  HeadlessDesktop desktop(std::make_unique<FakeDesktop>());
  desktop.bind(form_);
  form_.setVisible(true);
  desktop.processPendingMessages();
  EXPECT_EQ(form_.windowState(), WindowState::kMinimized);
  Form dialog(kTable);
  desktop.showModal(dialog, form_);
  EXPECT_TRUE(dialog.closed());
  desktop.release(form_);
  form_.setWindowState(WindowState::kNormal);
  desktop.run();
  EXPECT_EQ(form_.windowState(), WindowState::kNormal);
}

}  // namespace
}  // namespace karvel
