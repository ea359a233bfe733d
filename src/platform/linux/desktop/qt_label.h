#pragma once

#include <QLabel>

#include "platform/linux/desktop/qt_control_widget.h"

namespace karvel {

/// A label: plain, a section title (bold, on a band of its own) or a note (less prominent). A text
/// that is too long for its place can be read in the tool tip.
class QtLabel final : public QtControlWidget {
 public:
  QtLabel(Control& control, QWidget& parent);
  QWidget& widget() override { return label_; }
  void sync() override;
  void applyLook(const QWidget& window) override;

 private:
  void offerWholeText();
  void makeTitle(const QWidget& window);
  void makeNote(const QWidget& window);

  QLabel label_;
};

}  // namespace karvel
