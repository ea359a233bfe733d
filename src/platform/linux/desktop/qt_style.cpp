#include "platform/linux/desktop/qt_style.h"

#include <QApplication>

#include "platform/linux/desktop/qt_colours.h"

namespace karvel {

void QtStyle::polish(QPalette& palette) {
  QProxyStyle::polish(palette);
  const QColor background = palette.color(QPalette::Active, QPalette::Window);
  for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text}) {
    const QColor text = palette.color(QPalette::Active, role);
    const bool value = role == QPalette::Text;
    palette.setColor(QPalette::Disabled, role,
                     value ? quieter(text, background) : blended(text, background, 50));
  }
}

int QtStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                       QStyleHintReturn* returned) const {
  switch (hint) {
    case SH_LineEdit_PasswordCharacter:
      return '*';
    case SH_LineEdit_PasswordMaskDelay:
    case SH_EtchDisabledText:
    case SH_DialogButtonBox_ButtonsHaveIcons:
      return 0;
    default:
      return QProxyStyle::styleHint(hint, option, widget, returned);
  }
}

void installQtStyle() {
  QApplication::setStyle(new QtStyle);  // which takes it over
}

}  // namespace karvel
