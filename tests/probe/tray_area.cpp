#include <QCoreApplication>
#include <QDBusConnection>
#include <QTimer>
#include <chrono>
#include <csignal>
#include <cstdio>

/// A notification area on the session bus, which hangs at first, until it is told to continue. It
/// takes the first icon that registers, says so and ends; gives up after a while.
class TrayArea : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
  Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER isShown_ CONSTANT)

 public slots:
  void RegisterStatusNotifierItem(const QString&) {
    std::puts("registered");
    QCoreApplication::quit();
  }

 private:
  const bool isShown_ = true;
};

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  QDBusConnection bus = QDBusConnection::sessionBus();
  TrayArea area;
  bus.registerObject("/StatusNotifierWatcher", &area, QDBusConnection::ExportAllContents);
  bus.registerService("org.kde.StatusNotifierWatcher");
  std::raise(SIGSTOP);
  QTimer::singleShot(std::chrono::seconds(30), &application, &QCoreApplication::quit);
  return QCoreApplication::exec();
}

#include "tray_area.moc"
