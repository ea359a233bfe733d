#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>

#include "qt/qt_fixture.h"
#include "qt/sample_form.h"

namespace karvel {
namespace {

class Binding : public QtFixture {
 protected:
  Binding() { show(form_); }

  Control& text(int index) { return form_.control("Text", index); }
  QLineEdit& edit(int index) { return *find<QLineEdit>(form_, "Text", index); }

  void paste(QLineEdit& field, const QString& pasted) {
    QApplication::clipboard()->setText(pasted);
    field.paste();
  }

  Form form_{kSampleTable};
};

TEST_F(Binding, TypedTextReachesTheControlOncePerKey) {
  int changes = 0;
  text(0).onChange = [&] { ++changes; };
  QTest::keyClicks(&edit(0), "abc");
  EXPECT_EQ(text(0).text(), "abc");
  EXPECT_EQ(changes, 3);
}

TEST_F(Binding, TheProgramsTextReachesTheFieldAndRunsTheHandlerOnce) {
  int changes = 0;
  text(0).onChange = [&] { ++changes; };
  text(0).setText("駅前\U00020BB7野家");
  EXPECT_EQ(edit(0).text(), QStringLiteral("駅前\U00020BB7野家"));
  EXPECT_EQ(changes, 1);
}

TEST_F(Binding, AHandlerMayReplaceWhatWasTyped) {
  text(0).onChange = [this] {
    if (text(0).text() == "ab") text(0).setText("AB!");
  };
  QTest::keyClicks(&edit(0), "ab");
  EXPECT_EQ(edit(0).text(), "AB!");
}

struct Insertion {
  const char* before;
  const char* pasted;
  const char* after;
};

TEST_F(Binding, ADigitsFieldKeepsTheDigitsOfWhatIsTypedOrPasted) {
  for (const auto& [before, pasted, after] : {
           Insertion{"", "12a4", "124"}, Insertion{"", "１２3", "3"},
           Insertion{"", "1234567", "12345"}, Insertion{"99", "8765", "99876"},
           Insertion{"", "-1\t2\n3", "123"},
           Insertion{"x9", "1y", "x91"},          // what stood there already stays
           Insertion{"1234567", "8", "1234567"},  // also when it is too long
       }) {
    SCOPED_TRACE(pasted);
    text(1).setText(before);
    edit(1).end(false);
    paste(edit(1), QString::fromUtf8(pasted));
    EXPECT_EQ(text(1).text(), after);
    EXPECT_EQ(edit(1).text(), QString::fromUtf8(after));
  }
  text(1).setText("");
  QTest::keyClicks(&edit(1), "7k8-");
  QTest::keyClick(&edit(1), Qt::Key_Backspace);
  EXPECT_EQ(text(1).text(), "7");
}

TEST_F(Binding, APastedPieceReplacesTheSelection) {
  text(1).setText("12345");
  edit(1).setSelection(1, 3);
  paste(edit(1), "9a8b7");
  EXPECT_EQ(text(1).text(), "19875");
  EXPECT_EQ(edit(1).cursorPosition(), 4);
}

TEST_F(Binding, ADiscardedCharacterLeavesTheSelectionAlone) {
  text(1).setText("12345");
  edit(1).setSelection(1, 3);
  QTest::keyClicks(&edit(1), "x");
  EXPECT_EQ(text(1).text(), "12345");
  EXPECT_EQ(edit(1).selectedText(), "234");
  QTest::keyClicks(&edit(1), "9");
  EXPECT_EQ(text(1).text(), "195");
}

TEST_F(Binding, AOneLineFieldDropsLineEndsAndTabs) {
  paste(edit(0), QStringLiteral("a\tb\r\nc\u2028d"));
  EXPECT_EQ(text(0).text(), "abcd");
}

TEST_F(Binding, AnyTextIsTaken) {
  const QString strange = QStringLiteral("€é漢\U0001F600<b>&amp;\u202E").repeated(400);
  paste(edit(0), strange);
  EXPECT_EQ(text(0).text(), strange.toStdString());
  form_.control("Label").setCaption(strange.toStdString());
  form_.setCaption(strange.toStdString());
  text(0).setText("\xFF\xFE broken \x80");
  QTest::keyClicks(&edit(0), "x");
  desktop_.processPendingMessages();
  EXPECT_EQ(edit(0).text().toStdString(), text(0).text());
}

TEST_F(Binding, APasswordIsARowOfStars) {
  text(2).setText("geheim");
  EXPECT_EQ(edit(2).displayText(), "******");
  QTest::keyClicks(&edit(2), "!");
  EXPECT_EQ(edit(2).displayText(), "*******");
  edit(2).selectAll();
  QApplication::clipboard()->setText("unchanged");
  edit(2).copy();
  EXPECT_EQ(QApplication::clipboard()->text(), "unchanged");
}

TEST_F(Binding, OnlyAHiraganaFieldUsesTheInputMethod) {
  EXPECT_TRUE(edit(0).testAttribute(Qt::WA_InputMethodEnabled));
  EXPECT_FALSE(edit(1).testAttribute(Qt::WA_InputMethodEnabled));
  EXPECT_FALSE(edit(2).testAttribute(Qt::WA_InputMethodEnabled));
}

TEST_F(Binding, FocusIsReportedAndItsSelectionShown) {
  text(0).setText("全部選択");
  int reports = 0;
  text(0).onFocus = [&] {
    ++reports;
    text(0).setSelection(0, 4);
  };
  for (int round = 1; round <= 2; ++round) {
    edit(0).setFocus(Qt::TabFocusReason);
    EXPECT_EQ(reports, round);
    EXPECT_EQ(edit(0).selectedText(), QStringLiteral("全部選択"));
    edit(2).setFocus(Qt::TabFocusReason);
  }
  QTest::mouseClick(&edit(0), Qt::LeftButton);
  EXPECT_EQ(edit(0).selectedText(), QStringLiteral("全部選択"));
  QTest::mouseClick(&edit(0), Qt::LeftButton);
  EXPECT_EQ(edit(0).selectedText(), QString());
  EXPECT_EQ(reports, 3);
}

TEST_F(Binding, ASelectionCountsCharactersAndIsCutToTheText) {
  text(0).setText("a\U00020BB7b漢");
  text(0).setSelection(1, 2);
  EXPECT_EQ(edit(0).selectedText(), QStringLiteral("\U00020BB7b"));
  text(0).setSelection(3, 1000);
  EXPECT_EQ(edit(0).selectedText(), QStringLiteral("漢"));
  text(0).setSelection(50, 1);
  EXPECT_EQ(edit(0).selectedText(), QString());
}

TEST_F(Binding, OptionsExcludeEachOtherFromBothSides) {
  std::string clicks;
  for (const int index : {0, 1}) {
    form_.control("Option", index).onClick = [&clicks, index] { clicks += std::to_string(index); };
  }
  auto* first = find<QRadioButton>(form_, "Option", 0);
  auto* second = find<QRadioButton>(form_, "Option", 1);
  form_.control("Option", 1).select();
  EXPECT_TRUE(second->isChecked());
  QTest::mouseClick(first, Qt::LeftButton, {}, QPoint(8, first->height() / 2));
  EXPECT_TRUE(form_.control("Option", 0).selected());
  EXPECT_FALSE(form_.control("Option", 1).selected());
  EXPECT_FALSE(second->isChecked());
  QTest::keyClick(first, Qt::Key_Down);
  EXPECT_TRUE(form_.control("Option", 1).selected());
  EXPECT_EQ(clicks, "101");
}

TEST_F(Binding, ACheckBoxAndAButtonReportOnce) {
  Control& check = form_.control("Check");
  Control& button = form_.control("Button", 2);
  int clicks = 0;
  check.onClick = button.onClick = [&] { ++clicks; };
  auto* box = find<QCheckBox>(form_, "Check");
  box->click();
  EXPECT_EQ(check.value(), 1);
  check.setValue(0);
  EXPECT_FALSE(box->isChecked());
  auto* pushed = find<QPushButton>(form_, "Button", 2);
  pushed->click();
  EXPECT_EQ(clicks, 3);
  button.setEnabled(false);
  EXPECT_FALSE(pushed->isEnabled());
  pushed->click();
  EXPECT_EQ(clicks, 3);
}

TEST_F(Binding, CaptionsAreShownLetterForLetter) {
  EXPECT_EQ(find<QPushButton>(form_, "Button", 0)->text(), "Q&&A");
  EXPECT_EQ(find<QRadioButton>(form_, "Option", 0)->text(), "A && _B");
  form_.control("Label").setCaption("<b>Q&A</b> _x");
  const auto* label = find<QLabel>(form_, "Label");
  EXPECT_EQ(label->text(), "<b>Q&A</b> _x");
  EXPECT_EQ(label->textFormat(), Qt::PlainText);
  form_.setCaption("店[*]");
  EXPECT_EQ(window("SampleForm")->windowTitle(), QStringLiteral("店[*][*]"));
}

TEST_F(Binding, AListShowsItsEntries) {
  form_.control("List").setItems({"b", "a"});
  EXPECT_EQ(find<QListWidget>(form_, "List")->item(1)->text(), "a");
  form_.control("List").setItems({});
  EXPECT_EQ(find<QListWidget>(form_, "List")->count(), 0);
}

class PaintCounter : public QObject {
 public:
  int paints = 0;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++paints;
    return false;
  }
};

TEST_F(Binding, AStatusTextIsPaintedWithoutTheMessageLoop) {
  ASSERT_TRUE(QTest::qWaitForWindowExposed(window("SampleForm")));
  PaintCounter counter;
  find<QLabel>(form_, "Label")->installEventFilter(&counter);
  for (const char* status : {"1", "2", "3"}) form_.control("Label").setCaption(status);
  EXPECT_EQ(counter.paints, 3);
}

}  // namespace
}  // namespace karvel
