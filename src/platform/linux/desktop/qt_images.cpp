#include "platform/linux/desktop/qt_images.h"

#include <QDir>

// Outside of any namespace, as the macro demands; a static library's images are not registered by
// themselves.
static void registerImages() {
  Q_INIT_RESOURCE(icons);
}

namespace karvel {
namespace {

QIcon image(const char* name) {
  registerImages();
  QIcon icon;
  for (const int size : {16, 20, 24, 28, 32, 40, 48, 64}) {
    icon.addFile(QStringLiteral(":/icons/%1-%2.png").arg(QLatin1String(name)).arg(size));
  }
  return icon;
}

}  // namespace

QIcon qtTrayImage(TrayImage which) {
  return image(which == TrayImage::kFailure ? "failure" : "normal");
}

QIcon qtWindowImage() {
  return image("window");
}

}  // namespace karvel
