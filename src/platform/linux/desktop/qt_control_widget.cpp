#include "platform/linux/desktop/qt_control_widget.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>
#include <utility>

#include "platform/linux/desktop/qt_frame.h"
#include "platform/linux/desktop/qt_label.h"
#include "platform/linux/desktop/qt_text.h"
#include "platform/linux/desktop/qt_text_field.h"

namespace karvel {
namespace {

class ButtonWidget final : public QtControlWidget {
 public:
  ButtonWidget(Control& control, QWidget& parent) : QtControlWidget(control), button_(&parent) {
    button_.setAutoDefault(false);
    button_.setDefault(control.has(ControlRow::kDefaultButton));
    QObject::connect(&button_, &QPushButton::clicked, [&control] { control.click(); });
  }
  QWidget& widget() override { return button_; }
  void sync() override {
    button_.setText(literalCaption(control().caption()));
    button_.setEnabled(control().enabled());
  }

 private:
  QPushButton button_;
};

/// The keyboard enters a group at its selected option.
void placeTabStop(const QButtonGroup& group) {
  const QAbstractButton* const selected = group.checkedButton();
  for (QAbstractButton* button : group.buttons()) {
    const bool stop = selected == nullptr || button == selected;
    button->setFocusPolicy(stop ? Qt::StrongFocus : Qt::ClickFocus);
  }
}

class OptionWidget final : public QtControlWidget {
 public:
  OptionWidget(Control& control, QWidget& parent, QButtonGroup& group)
      : QtControlWidget(control), button_(&parent) {
    group.addButton(&button_);
    QObject::connect(&button_, &QRadioButton::clicked, [&control] { control.select(); });
  }
  QWidget& widget() override { return button_; }
  void sync() override {
    button_.setText(literalCaption(control().caption()));
    button_.setEnabled(control().enabled());
    // The group clears the others; clearing the selected one alone is not a state of its own.
    if (control().selected()) button_.setChecked(true);
    placeTabStop(*button_.group());
  }

 private:
  QRadioButton button_;
};

class CheckWidget final : public QtControlWidget {
 public:
  CheckWidget(Control& control, QWidget& parent) : QtControlWidget(control), box_(&parent) {
    QObject::connect(&box_, &QCheckBox::clicked,
                     [&control](bool checked) { control.setValue(checked ? 1 : 0); });
  }
  QWidget& widget() override { return box_; }
  void sync() override {
    box_.setText(literalCaption(control().caption()));
    box_.setEnabled(control().enabled());
    box_.setChecked(control().value() != 0);
  }

 private:
  QCheckBox box_;
};

}  // namespace

void QtControlWidget::applyLook(const QWidget&) {
}

std::unique_ptr<QtControlWidget> makeQtControlWidget(Form& form, Control& control, QWidget& parent,
                                                     QButtonGroup& group) {
  switch (control.row().kind) {
    case ControlKind::kLabel:
      return std::make_unique<QtLabel>(control, parent);
    case ControlKind::kTextBox:
      return std::make_unique<QtTextField>(form, control, parent);
    case ControlKind::kButton:
      return std::make_unique<ButtonWidget>(control, parent);
    case ControlKind::kOptionButton:
      return std::make_unique<OptionWidget>(control, parent, group);
    case ControlKind::kCheckBox:
      return std::make_unique<CheckWidget>(control, parent);
    case ControlKind::kListBox:
    case ControlKind::kFrame:
    case ControlKind::kLine:
      break;
  }
  return std::make_unique<QtFrame>(control, parent);
}

}  // namespace karvel
