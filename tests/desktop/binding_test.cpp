#include "contract/ports.h"
#include "desktop/desktop_fixture.h"

namespace karvel {
namespace {

class Binding : public ShownForm {};

TEST_F(Binding, ATextGoesBothWaysAndRunsTheHandlerOnce) {
  int changes = 0;
  text(0).onChange = [&] { ++changes; };
  user_.focus(field(0));
  user_.type("ab漢\U00020BB7");
  EXPECT_EQ(text(0).text(), "ab漢\U00020BB7");
  EXPECT_EQ(changes, 4);
  text(0).setText("駅前\U00020BB7野家");
  EXPECT_EQ(User::look(field(0)).text, "駅前\U00020BB7野家");
  EXPECT_EQ(changes, 5);
  text(0).setText("\xFF\xFE broken \x80");
  user_.type("x");
  EXPECT_EQ(User::look(field(0)).text, text(0).text());
}

TEST_F(Binding, APastedTextPassesTheFilterAndTheLengthLimit) {
  std::string strange;
  while (strange.size() < 4000 * 3) strange += "€é漢\U0001F600<b>&amp;\u202E";
  const struct {
    int field;
    std::string before;
    std::size_t selectionStart, selectionLength;
    std::string pasted, after;
  } cases[] = {
      {1, "x9", 2, 0, "1y", "x91"},          // what stood there already stays
      {1, "1234567", 7, 0, "8", "1234567"},  // also when it is too long
      {2, "a", 1, 0, "𠮷野家𠮷野家𠮷野家", "a𠮷野家𠮷野家𠮷"},
      {0, "", 0, 0, "a\tb\r\nc\u2028d", "abcd"},
      {0, "", 0, 0, strange, strange},
      {0, "\U00020BB7", 0, 1, "\U00020BB8", "\U00020BB8"},  // half of it is the same
  };
  for (const auto& c : cases) {
    text(c.field).setText("");
    user_.focus(field(c.field));
    text(c.field).setText(c.before);
    text(c.field).setSelection(c.selectionStart, c.selectionLength);
    user_.paste(c.pasted);
    EXPECT_EQ(text(c.field).text(), c.after);
  }
}

TEST_F(Binding, ADiscardedTextLeavesTheSelectionAlone) {
  text(1).setText("12345");
  user_.focus(field(1));
  text(1).setSelection(1, 3);
  user_.type("x");
  user_.paste("abc");
  EXPECT_EQ(User::look(field(1)).selectedText, "234");
  user_.type("9");
  EXPECT_EQ(text(1).text(), "195");
}

TEST_F(Binding, APasswordIsARowOfStarsWithoutInputMethod) {
  user_.focus(field(2));
  user_.type("geheim!");
  EXPECT_EQ(text(2).text(), "geheim!");
  EXPECT_EQ(User::look(field(2)).text, "*******");
  EXPECT_FALSE(User::look(field(2)).takesInputMethod);
  EXPECT_TRUE(User::look(field(0)).takesInputMethod || isKnown(Difference::kNoInputMethod));
}

TEST_F(Binding, FocusIsReportedAndItsSelectionShown) {
  text(0).setText("漢\U00020BB7ba");
  int reports = 0;
  text(0).onFocus = [&] {
    ++reports;
    text(0).setSelection(1, 2);
  };
  for (int round = 1; round <= 2; ++round) {
    user_.focus(field(2));
    user_.focus(field(0));
    EXPECT_EQ(reports, round);
    EXPECT_EQ(User::look(field(0)).selectedText, "\U00020BB7b");
  }
  user_.focus(field(2));
  user_.click(field(0));
  EXPECT_EQ(User::look(field(0)).selectedText, "\U00020BB7b");
  user_.click(field(0));
  EXPECT_EQ(User::look(field(0)).selectedText, "");
  EXPECT_EQ(reports, 3);
}

TEST_F(Binding, OptionsExcludeEachOtherFromBothSides) {
  std::string clicks;
  logClicks("Option", clicks);
  const Widget first = widget("Option", 0);
  const Widget second = widget("Option", 1);
  form_.control("Option", 1).select();
  EXPECT_TRUE(User::look(second).isChecked);
  for (int twice = 0; twice < 2; ++twice) user_.click(first);
  EXPECT_TRUE(form_.control("Option", 0).selected());
  EXPECT_TRUE(User::look(first).isChecked);
  EXPECT_FALSE(User::look(second).isChecked);
  user_.press(Key::kDown);
  EXPECT_EQ(User::focused(), second);
  user_.press(Key::kUp);
  EXPECT_EQ(clicks, "1010");
  for (const Widget from : {widget("Check"), button(0)}) {
    user_.focus(from);
    for (const Key key : {Key::kUp, Key::kUp, Key::kDown}) {
      user_.press(key);
      EXPECT_EQ(User::focused(), from) << "arrows lead from an option alone";
    }
  }
  EXPECT_EQ(clicks, "1010");
}

TEST_F(Binding, ACheckBoxAndAButtonReportOnce) {
  Control& check = form_.control("Check");
  Control& command = form_.control("Button", 2);
  int clicks = 0;
  check.onClick = command.onClick = [&] { ++clicks; };
  user_.click(widget("Check"));
  EXPECT_EQ(check.value(), 1);
  check.setValue(0);
  EXPECT_FALSE(User::look(widget("Check")).isChecked);
  user_.click(button(2));
  EXPECT_EQ(clicks, 3);
  command.setEnabled(false);
  EXPECT_FALSE(User::look(button(2)).isEnabled);
  user_.click(button(2));
  EXPECT_EQ(clicks, 3);
}

TEST_F(Binding, CaptionsAreShownLetterForLetter) {
  EXPECT_EQ(User::look(button(0)).text, "Q&A");
  EXPECT_EQ(User::look(widget("Option", 0)).text, "A & _B");
  form_.control("Label1", 0).setCaption("<b>Q&A</b> _x");
  EXPECT_EQ(User::look(widget("Label1", 0)).text, "<b>Q&A</b> _x");
  form_.setCaption("店[*] &x");
  EXPECT_EQ(User::look(window()).text, "店[*] &x");
}

}  // namespace
}  // namespace karvel
