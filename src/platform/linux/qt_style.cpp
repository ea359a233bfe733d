#include "platform/linux/qt_style.h"

namespace karvel {

int QtStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                       QStyleHintReturn* returned) const {
  switch (hint) {
    case SH_LineEdit_PasswordCharacter:
      return '*';
    case SH_LineEdit_PasswordMaskDelay:
      return 0;
    default:
      return QProxyStyle::styleHint(hint, option, widget, returned);
  }
}

}  // namespace karvel
