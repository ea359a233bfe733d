#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>
#include <tuple>

#include "qt/qt_fixture.h"
#include "ui/ftp_form.h"
#include "ui/grp_form.h"
#include "ui/user_form.h"

namespace karvel {
namespace {

/// Every form at several sizes of the system's font; the display's scale comes from outside.
class Layout : public QtFixture,
               public ::testing::WithParamInterface<std::tuple<const FormTable*, double>> {
 protected:
  void SetUp() override {
    QFont font = QApplication::font();
    font.setPointSizeF(std::get<double>(GetParam()));
    QApplication::setFont(font);
    show(form_);
  }
  void TearDown() override {
    QtFixture::TearDown();
    QApplication::setFont(usualFont_);
  }

  QWidget* widget(const Control& control) const {
    return find<QWidget>(form_, control.row().name, control.row().index);
  }

  QFont usualFont_ = QApplication::font();
  Form form_{*std::get<const FormTable*>(GetParam())};
};

bool isDecoration(const Control& control) {
  return control.row().kind == ControlKind::kFrame || control.row().kind == ControlKind::kLine;
}

bool hasKind(const QWidget* widget, ControlKind kind) {
  switch (kind) {
    case ControlKind::kLabel:
      return qobject_cast<const QLabel*>(widget) != nullptr;
    case ControlKind::kTextBox:
      return qobject_cast<const QLineEdit*>(widget) != nullptr;
    case ControlKind::kButton:
      return qobject_cast<const QPushButton*>(widget) != nullptr;
    case ControlKind::kOptionButton:
      return qobject_cast<const QRadioButton*>(widget) != nullptr;
    case ControlKind::kCheckBox:
      return qobject_cast<const QCheckBox*>(widget) != nullptr;
    case ControlKind::kListBox:
      return qobject_cast<const QListWidget*>(widget) != nullptr;
    case ControlKind::kFrame:
    case ControlKind::kLine:
      return true;
  }
  return false;
}

TEST_P(Layout, EveryControlIsThereAsItsRowSays) {
  for (const auto& control : form_.controls()) {
    const ControlRow& row = control->row();
    SCOPED_TRACE(std::string(row.name) + " " + std::to_string(row.index));
    const QWidget* shown = widget(*control);
    ASSERT_NE(shown, nullptr);
    EXPECT_TRUE(hasKind(shown, row.kind));
    EXPECT_EQ(shown->isVisible(), !control->has(ControlRow::kHidden));
    if (!shown->isVisible()) continue;
    EXPECT_EQ(shown->isEnabled(), control->enabled());
    EXPECT_EQ(shown->toolTip().toStdString(), row.toolTip);
    const bool field = row.kind == ControlKind::kTextBox;
    EXPECT_FALSE(field && shown->accessibleName().isEmpty());
  }
}

/// Room for the caption and what the style draws around it.
QSize needed(const QWidget& widget) {
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
    return {0, label->heightForWidth(label->width())};
  }
  if (const auto* button = qobject_cast<const QPushButton*>(&widget)) {
    const QFontMetrics metrics = button->fontMetrics();
    return {metrics.horizontalAdvance(button->text()) + 2 * metrics.averageCharWidth(),
            metrics.height() + 4};
  }
  if (qobject_cast<const QAbstractButton*>(&widget) != nullptr) {
    return {widget.sizeHint().width(), widget.fontMetrics().height()};
  }
  return {0, widget.fontMetrics().height() + 4};
}

TEST_P(Layout, NoCaptionIsCut) {
  for (const auto& control : form_.controls()) {
    if (control->has(ControlRow::kHidden) || isDecoration(*control)) continue;
    SCOPED_TRACE(std::string(control->row().name) + " " + control->row().caption);
    const QWidget& shown = *widget(*control);
    EXPECT_LE(needed(shown).width(), shown.width());
    EXPECT_LE(needed(shown).height(), shown.height());
  }
}

TEST_P(Layout, NothingOverlapsOrLeavesTheWindow) {
  std::vector<const QWidget*> shown;
  for (const auto& control : form_.controls()) {
    if (!control->has(ControlRow::kHidden)) shown.push_back(widget(*control));
  }
  const QRect client = window(form_.table().name)->rect();
  for (std::size_t i = 0; i < shown.size(); ++i) {
    const QRect place = shown[i]->geometry();
    EXPECT_TRUE(client.contains(place)) << shown[i]->objectName().toStdString();
    for (std::size_t j = i + 1; j < shown.size(); ++j) {
      const QRect other = shown[j]->geometry();
      const bool inFrame = place.contains(other) && shown[i]->objectName() == "Frame1";
      EXPECT_TRUE(inFrame || !place.intersects(other))
          << shown[i]->objectName().toStdString() << " and "
          << shown[j]->objectName().toStdString();
    }
  }
}

TEST_P(Layout, TheFocusWalksInTabOrder) {
  std::vector<std::pair<int, const QWidget*>> expected;
  for (const auto& control : form_.controls()) {
    const int order = control->row().tabOrder;
    if (order != ControlRow::kNoTab) expected.emplace_back(order, widget(*control));
  }
  std::sort(expected.begin(), expected.end());

  std::vector<const QWidget*> walked;
  const QWidget* start = expected.front().second;
  const QWidget* at = start;
  do {
    if (at->focusPolicy() != Qt::NoFocus && at->parentWidget() != nullptr) walked.push_back(at);
    at = at->nextInFocusChain();
  } while (at != start);

  ASSERT_EQ(walked.size(), expected.size());
  for (std::size_t i = 0; i < walked.size(); ++i) EXPECT_EQ(walked[i], expected[i].second);
}

TEST_P(Layout, TheWindowHasOneSize) {
  const QWidget* shown = window(form_.table().name);
  EXPECT_EQ(shown->minimumSize(), shown->maximumSize());
  EXPECT_EQ(shown->windowFlags().testFlag(Qt::WindowMinimizeButtonHint), form_.table().canMinimize);
}

INSTANTIATE_TEST_SUITE_P(Forms, Layout,
                         ::testing::Combine(::testing::Values(&kFtpFormTable, &kGrpFormTable,
                                                              &kUserFormTable),
                                            ::testing::Values(9.0, 13.5, 18.0)),
                         [](const auto& test) {
                           return std::string(std::get<const FormTable*>(test.param)->name) + "At" +
                                  std::to_string(static_cast<int>(std::get<double>(test.param))) +
                                  "Points";
                         });

}  // namespace
}  // namespace karvel
