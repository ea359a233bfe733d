// The least that a Qt program with an icon in the notification area, or with a window, can be: what
// the real program is measured against.

#include <QApplication>
#include <QIcon>
#include <QPixmap>
#include <QSystemTrayIcon>
#include <QWidget>
#include <string_view>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QWidget window;
  QSystemTrayIcon icon;
  if (argc > 1 && std::string_view(argv[1]) == "window") {
    window.setWindowTitle(QStringLiteral("bare"));
    window.setFixedSize(755, 480);
    window.show();
  } else {
    QPixmap image(32, 32);
    image.fill(Qt::darkCyan);
    icon.setIcon(QIcon(image));
    icon.show();
  }
  return QApplication::exec();
}
