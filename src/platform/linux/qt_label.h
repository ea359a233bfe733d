#pragma once

#include <QLabel>

#include "platform/linux/qt_control_widget.h"

namespace karvel {

/// A label: plain, a section title (bold, with a line across the rest of its rectangle) or a note
/// (less prominent).
class QtLabel final : public QtControlWidget {
 public:
  QtLabel(Control& control, QWidget& parent);
  QWidget& widget() override { return label_; }
  void sync() override;
  void applyLook(const QWidget& window) override;

 private:
  class RuledLabel final : public QLabel {
   public:
    RuledLabel(QWidget& parent, bool ruled);

   protected:
    void paintEvent(QPaintEvent* event) override;

   private:
    bool ruled_;
  };

  RuledLabel label_;
};

}  // namespace karvel
