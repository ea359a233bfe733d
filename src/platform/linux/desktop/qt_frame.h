#pragma once

#include <QWidget>

#include "platform/linux/desktop/qt_control_widget.h"

namespace karvel {

/// A thin border behind other controls, or a thin horizontal line.
class QtFrame final : public QtControlWidget {
 public:
  QtFrame(Control& control, QWidget& parent);
  QWidget& widget() override { return border_; }
  void sync() override { border_.setEnabled(control().enabled()); }

 private:
  /// Drawn a pixel inside its edges, where no fractional scaling cuts it off.
  class Border final : public QWidget {
   public:
    Border(QWidget& parent, bool line) : QWidget(&parent), line_(line) {}

   protected:
    void paintEvent(QPaintEvent* event) override;

   private:
    bool line_;
  };

  Border border_;
};

}  // namespace karvel
