#pragma once

#include <QProxyStyle>

namespace karvel {

/// The desktop's own style, but for what the forms prescribe: a password is a row of "*" from the
/// first moment on.
class QtStyle final : public QProxyStyle {
 public:
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override;
};

}  // namespace karvel
