#include "platform/linux/desktop/qt_controls.h"

#include <QCheckBox>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>

#include "platform/linux/desktop/qt_look.h"
#include "platform/linux/desktop/qt_text.h"
#include "platform/linux/desktop/qt_text_field.h"

namespace karvel {
namespace {

class ButtonWidget final : public QtControlWidget {
 public:
  ButtonWidget(Control& control, const QtFormLink& link, QWidget& parent)
      : QtControlWidget(control, link), button_(&parent) {
    button_.setAutoDefault(false);
    button_.setDefault(control.has(ControlRow::kDefaultButton));
    QObject::connect(&button_, &QPushButton::clicked,
                     [this] { tell([](Control& pressed) { pressed.click(); }); });
  }
  QWidget& widget() override { return button_; }
  void sync() override {
    button_.setText(literalCaption(control().caption()));
    button_.setEnabled(control().enabled());
  }

 private:
  QPushButton button_;
};

class OptionWidget final : public QtControlWidget {
 public:
  OptionWidget(Control& control, const QtFormLink& link, QWidget& parent)
      : QtControlWidget(control, link), button_(&parent) {
    button_.setAutoExclusive(false);  // which options exclude each other, the form knows
    QObject::connect(&button_, &QRadioButton::clicked, [this] {
      button_.setChecked(true);  // a click has cleared it when it was selected already
      tell([](Control& chosen) { chosen.click(); });
    });
  }
  QWidget& widget() override { return button_; }
  void sync() override {
    button_.setText(literalCaption(control().caption()));
    button_.setEnabled(control().enabled());
    button_.setChecked(control().selected());
  }

 private:
  QRadioButton button_;
};

class CheckWidget final : public QtControlWidget {
 public:
  CheckWidget(Control& control, const QtFormLink& link, QWidget& parent)
      : QtControlWidget(control, link), box_(&parent) {
    QObject::connect(&box_, &QCheckBox::clicked, [this](bool checked) {
      tell([checked](Control& changed) { changed.setValue(checked ? 1 : 0); });
    });
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

/// A label: plain, a section title (bold, on a band of its own) or a note (less prominent). A text
/// that is too long for its place begins at the top of it and can be read in the tool tip.
class LabelWidget final : public QtControlWidget {
 public:
  LabelWidget(Control& control, const QtFormLink& link, QWidget& parent)
      : QtControlWidget(control, link), label_(&parent) {
    label_.setTextFormat(Qt::PlainText);
    label_.setWordWrap(true);
  }
  QWidget& widget() override { return label_; }
  void sync() override {
    label_.setText(toQt(control().caption()));
    label_.setEnabled(control().enabled());
    fitText();
  }
  void applyLook(const QWidget& window) override {
    if (control().has(ControlRow::kTitle)) makeTitle(window);
    if (control().has(ControlRow::kNote)) makeNote(window);
    fitText();
  }

 private:
  void fitText() {
    const bool fits = label_.heightForWidth(label_.width()) <= label_.height();
    label_.setAlignment(Qt::AlignLeft | (fits ? Qt::AlignVCenter : Qt::AlignTop));
    label_.setToolTip(fits ? QString() : literalToolTip(label_.text()));
  }

  void makeTitle(const QWidget& window) {
    QFont font = window.font();
    font.setBold(true);
    label_.setFont(font);
    QPalette palette = window.palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
      const QColor band = blended(palette.color(group, QPalette::Highlight),
                                  palette.color(group, QPalette::Window), 15);
      palette.setColor(group, QPalette::Window, band);
    }
    label_.setPalette(palette);
    label_.setAutoFillBackground(true);
    label_.setIndent(label_.fontMetrics().averageCharWidth() / 2);
  }

  void makeNote(const QWidget& window) {
    QPalette palette = window.palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
      palette.setColor(group, QPalette::WindowText,
                       quieter(palette.color(group, QPalette::WindowText),
                               palette.color(group, QPalette::Window)));
    }
    label_.setPalette(palette);
  }

  QLabel label_;
};

/// A thin border, or a thin horizontal line.
class DecorationWidget final : public QtControlWidget {
 public:
  DecorationWidget(Control& control, const QtFormLink& link, QWidget& parent)
      : QtControlWidget(control, link), border_(parent, control.row().kind == ControlKind::kLine) {
    border_.lower();
  }
  QWidget& widget() override { return border_; }
  void sync() override { border_.setEnabled(control().enabled()); }

 private:
  /// Drawn a pixel inside its edges, where no fractional scaling cuts it off.
  class Border final : public QWidget {
   public:
    Border(QWidget& parent, bool line) : QWidget(&parent), line_(line) {}

   protected:
    void paintEvent(QPaintEvent*) override {
      const QColor text = palette().color(QPalette::Active, QPalette::WindowText);
      const QColor back = palette().color(QPalette::Active, QPalette::Window);
      QPainter painter(this);
      painter.setRenderHint(QPainter::Antialiasing, !line_);
      painter.setPen(QPen(blended(text, back, 28), 1));
      if (line_) {
        painter.drawLine(0, height() / 2, width(), height() / 2);
      } else {
        painter.drawRoundedRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5), 3, 3);
      }
    }

   private:
    bool line_;
  };

  Border border_;
};

}  // namespace

std::unique_ptr<QtControlWidget> makeQtControlWidget(Control& control, const QtFormLink& link,
                                                     QWidget& parent) {
  switch (control.row().kind) {
    case ControlKind::kLabel:
      return std::make_unique<LabelWidget>(control, link, parent);
    case ControlKind::kTextBox:
      return std::make_unique<QtTextField>(control, link, parent);
    case ControlKind::kButton:
      return std::make_unique<ButtonWidget>(control, link, parent);
    case ControlKind::kOptionButton:
      return std::make_unique<OptionWidget>(control, link, parent);
    case ControlKind::kCheckBox:
      return std::make_unique<CheckWidget>(control, link, parent);
    case ControlKind::kListBox:
    case ControlKind::kFrame:
    case ControlKind::kLine:
      break;
  }
  return std::make_unique<DecorationWidget>(control, link, parent);
}

}  // namespace karvel
