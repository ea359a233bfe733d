#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QTimer>
#include <chrono>
#include <cstdio>

/// A notification area on the session bus: takes the first icon that registers, says so and ends;
/// gives up after a while.
class TrayArea : public QDBusVirtualObject {
 public:
  QString introspect(const QString&) const override {
    return R"(<interface name="org.kde.StatusNotifierWatcher">
      <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
      <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
      </interface>)";
  }

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    if (message.member() == "Introspect") return false;  // answered by introspect()
    QDBusMessage reply = message.createReply();
    // The one property: whether somebody shows the icons.
    if (message.member() == "Get") reply << QVariant::fromValue(QDBusVariant(true));
    bus.send(reply);
    if (message.member() == "RegisterStatusNotifierItem") {
      std::puts("registered");
      QCoreApplication::quit();
    }
    return true;
  }
};

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  QDBusConnection bus = QDBusConnection::sessionBus();
  TrayArea area;
  bus.registerVirtualObject("/StatusNotifierWatcher", &area);
  bus.registerService("org.kde.StatusNotifierWatcher");
  QTimer::singleShot(std::chrono::seconds(30), &application, &QCoreApplication::quit);
  return QCoreApplication::exec();
}
