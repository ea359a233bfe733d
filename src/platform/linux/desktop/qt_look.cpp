#include "platform/linux/desktop/qt_look.h"

#include <QApplication>
#include <QDir>
#include <QFontMetricsF>
#include <QProxyStyle>

// Outside of any namespace, as the macro demands; a static library's images are not registered by
// themselves.
static void registerImages() {
  Q_INIT_RESOURCE(icons);
}

namespace karvel {
namespace {

class QtStyle final : public QProxyStyle {
 public:
  using QProxyStyle::polish;

  void polish(QPalette& palette) override {
    QProxyStyle::polish(palette);
    const QColor background = palette.color(QPalette::Active, QPalette::Window);
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text}) {
      const QColor text = palette.color(QPalette::Active, role);
      const bool value = role == QPalette::Text;
      palette.setColor(QPalette::Disabled, role,
                       value ? quieter(text, background) : blended(text, background, 50));
    }
  }

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override {
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
};

QIcon image(const char* name) {
  registerImages();
  QIcon icon;
  for (const int size : {16, 20, 24, 28, 32, 40, 48, 64}) {
    icon.addFile(QStringLiteral(":/icons/%1-%2.png").arg(QLatin1String(name)).arg(size));
  }
  return icon;
}

}  // namespace

void installQtStyle() {
  QApplication::setStyle(new QtStyle);  // which takes it over
}

QIcon qtTrayImage(TrayImage which) {
  return image(which == TrayImage::kFailure ? "failure" : "normal");
}

QIcon qtWindowImage() {
  return image("window");
}

DialogUnits qtDialogUnits(const QFont& font) {
  const QString letters = QStringLiteral("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ");
  const QFontMetricsF metrics(font);
  return {metrics.horizontalAdvance(letters) / static_cast<double>(letters.size()),
          metrics.height()};
}

QColor blended(const QColor& front, const QColor& behind, int percent) {
  const auto mix = [percent](int above, int below) {
    return (above * percent + below * (100 - percent)) / 100;
  };
  return {mix(front.red(), behind.red()), mix(front.green(), behind.green()),
          mix(front.blue(), behind.blue())};
}

QColor quieter(const QColor& text, const QColor& background) {
  return blended(text, background, 70);
}

}  // namespace karvel
