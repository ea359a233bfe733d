#include "contract/known_differences.h"
#include "desktop/desktop_fixture.h"

namespace karvel {
namespace {

class Binding : public DesktopTest {
 protected:
  Binding() { show(form_); }

  Control& text(int index) { return form_.control("Text", index); }
  Widget field(int index) { return widget("Text", index); }

  /// Into the field that has the focus.
  void paste(const std::string& pasted) {
    user_.putOnClipboard(pasted);
    user_.pressWith(Key::kControl, Key::kV);
  }
};

TEST_F(Binding, TypedTextReachesTheControlOncePerCharacter) {
  int changes = 0;
  text(0).onChange = [&] { ++changes; };
  user_.focus(field(0));
  user_.type("ab漢\U00020BB7");
  EXPECT_EQ(text(0).text(), "ab漢\U00020BB7");
  EXPECT_EQ(User::text(field(0)), "ab漢\U00020BB7");
  EXPECT_EQ(changes, 4);
}

TEST_F(Binding, TheProgramsTextReachesTheFieldAndRunsTheHandlerOnce) {
  int changes = 0;
  text(0).onChange = [&] { ++changes; };
  text(0).setText("駅前\U00020BB7野家");
  EXPECT_EQ(User::text(field(0)), "駅前\U00020BB7野家");
  EXPECT_EQ(changes, 1);
}

struct Insertion {
  int field;
  const char* before;
  const char* pasted;
  const char* after;
};

TEST_F(Binding, APastedTextPassesTheFilterAndTheLengthLimit) {
  constexpr int kAny = 0;
  constexpr int kFiveDigits = 1;
  constexpr int kEightCharacters = 2;
  for (const auto& [index, before, pasted, after] : {
           Insertion{kFiveDigits, "", "12a4", "124"},
           Insertion{kFiveDigits, "x9", "1y", "x91"},          // what stood there already stays
           Insertion{kFiveDigits, "1234567", "8", "1234567"},  // also when it is too long
           Insertion{kAny, "", "a\tb\r\nc\u2028d", "abcd"},
           Insertion{kEightCharacters, "a", "𠮷野家𠮷野家𠮷野家", "a𠮷野家𠮷野家𠮷"},
       }) {
    SCOPED_TRACE(pasted);
    text(index).setText("");
    user_.focus(field(index));
    text(index).setText(before);
    text(index).setSelection(100, 0);
    paste(pasted);
    EXPECT_EQ(text(index).text(), after);
    text(index).setSelection(0, 0);
  }
}

TEST_F(Binding, ADiscardedTextLeavesTheSelectionAlone) {
  text(1).setText("12345");
  user_.focus(field(1));
  text(1).setSelection(1, 3);
  user_.type("x");
  paste("abc");
  EXPECT_EQ(text(1).text(), "12345");
  EXPECT_EQ(User::selectedText(field(1)), "234");
  user_.type("9");
  EXPECT_EQ(text(1).text(), "195");
}

TEST_F(Binding, AnyTextIsTaken) {
  std::string strange;
  while (strange.size() < 4000 * 3) strange += "€é漢\U0001F600<b>&amp;\u202E";
  user_.focus(field(0));
  paste(strange);
  EXPECT_EQ(text(0).text(), strange);
  form_.control("Label").setCaption(strange);
  form_.setCaption(strange);
  text(0).setText("\xFF\xFE broken \x80");
  user_.type("x");
  EXPECT_EQ(User::text(field(0)), text(0).text());
}

TEST_F(Binding, APasswordIsARowOfStars) {
  text(2).setText("geheim");
  EXPECT_EQ(User::text(field(2)), "******");
  user_.focus(field(2));
  text(2).setSelection(6, 0);
  user_.type("!");
  EXPECT_EQ(text(2).text(), "geheim!");
  EXPECT_EQ(User::text(field(2)), "*******");
  text(2).setSelection(0, 7);
  user_.putOnClipboard("unchanged");
  user_.pressWith(Key::kControl, Key::kC);
  EXPECT_EQ(User::clipboard(), "unchanged");
}

TEST_F(Binding, OnlyAHiraganaFieldUsesTheInputMethod) {
  EXPECT_EQ(User::takesInputMethod(field(0)), !differsHere(Difference::kNoInputMethod));
  EXPECT_FALSE(User::takesInputMethod(field(1)));
  EXPECT_FALSE(User::takesInputMethod(field(2)));
}

TEST_F(Binding, FocusIsReportedAndItsSelectionShown) {
  text(0).setText("全部選択");
  int reports = 0;
  text(0).onFocus = [&] {
    ++reports;
    text(0).setSelection(0, 4);
  };
  for (int round = 1; round <= 2; ++round) {
    user_.focus(field(0));
    EXPECT_EQ(reports, round);
    EXPECT_EQ(User::selectedText(field(0)), "全部選択");
    user_.focus(field(2));
  }
  user_.click(field(0));
  EXPECT_EQ(User::selectedText(field(0)), "全部選択");
  user_.click(field(0));
  EXPECT_EQ(User::selectedText(field(0)), "");
  EXPECT_EQ(reports, 3);
}

TEST_F(Binding, ASelectionCountsCharactersAndIsCutToTheText) {
  text(0).setText("a\U00020BB7b漢");
  text(0).setSelection(1, 2);
  EXPECT_EQ(User::selectedText(field(0)), "\U00020BB7b");
  text(0).setSelection(3, 1000);
  EXPECT_EQ(User::selectedText(field(0)), "漢");
  text(0).setSelection(50, 1);
  EXPECT_EQ(User::selectedText(field(0)), "");
}

TEST_F(Binding, OptionsExcludeEachOtherFromBothSides) {
  std::string clicks;
  for (const int index : {0, 1}) {
    form_.control("Option", index).onClick = [&clicks, index] { clicks += std::to_string(index); };
  }
  const Widget first = widget("Option", 0);
  const Widget second = widget("Option", 1);
  form_.control("Option", 1).select();
  EXPECT_TRUE(User::isChecked(second));
  user_.click(first);
  EXPECT_TRUE(form_.control("Option", 0).selected());
  EXPECT_FALSE(form_.control("Option", 1).selected());
  EXPECT_TRUE(User::isChecked(first));
  EXPECT_FALSE(User::isChecked(second));
  user_.press(Key::kDown);
  EXPECT_TRUE(form_.control("Option", 1).selected());
  EXPECT_EQ(User::focused(), second);
  user_.press(Key::kUp);
  EXPECT_EQ(clicks, "1010");
}

TEST_F(Binding, ACheckBoxAndAButtonReportOnce) {
  Control& check = form_.control("Check");
  Control& button = form_.control("Button", 2);
  int clicks = 0;
  check.onClick = button.onClick = [&] { ++clicks; };
  user_.click(widget("Check"));
  EXPECT_EQ(check.value(), 1);
  check.setValue(0);
  EXPECT_FALSE(User::isChecked(widget("Check")));
  user_.click(widget("Button", 2));
  EXPECT_EQ(clicks, 3);
  button.setEnabled(false);
  EXPECT_FALSE(User::isEnabled(widget("Button", 2)));
  user_.click(widget("Button", 2));
  EXPECT_EQ(clicks, 3);
}

TEST_F(Binding, CaptionsAreShownLetterForLetter) {
  EXPECT_EQ(User::text(widget("Button", 0)), "Q&A");
  EXPECT_EQ(User::text(widget("Option", 0)), "A & _B");
  form_.control("Label").setCaption("<b>Q&A</b> _x");
  EXPECT_EQ(User::text(widget("Label")), "<b>Q&A</b> _x");
  form_.setCaption("店[*] &x");
  EXPECT_EQ(User::text(window()), "店[*] &x");
}

TEST_F(Binding, AStatusTextIsPaintedWithoutTheMessageLoop) {
  user_.watchPainting(widget("Label"));
  for (const char* status : {"1", "2", "3"}) form_.control("Label").setCaption(status);
  EXPECT_EQ(user_.paints(), 3);
}

}  // namespace
}  // namespace karvel
