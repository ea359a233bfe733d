#pragma once

#include <QProxyStyle>

namespace karvel {

/// The desktop's own style, but for two things. A password is a row of "*" from the first moment
/// on. And disabled texts stay readable: the panel shows values that are edited elsewhere, and
/// small kana fade away in the usual pale grey.
class QtStyle final : public QProxyStyle {
 public:
  using QProxyStyle::polish;
  void polish(QPalette& palette) override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override;
};

/// Makes it the application's style.
void installQtStyle();

}  // namespace karvel
