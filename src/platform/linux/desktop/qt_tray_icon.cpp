#include "platform/linux/desktop/qt_tray_icon.h"

#include <xcb/xcb.h>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QMouseEvent>
#include <QWidget>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <utility>

#include "platform/linux/desktop/qt_look.h"
#include "platform/linux/desktop/qt_text.h"

namespace karvel {
namespace {

constexpr std::chrono::seconds kSearchInterval{1};
constexpr int kAnswerTime = 200;  // ms; a watcher that hangs must not hold the program

bool hasOwner(xcb_connection_t* server, const std::string& selection) {
  const auto length = static_cast<std::uint16_t>(selection.size());
  const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
      xcb_intern_atom_reply(server, xcb_intern_atom(server, 0, length, selection.data()), nullptr),
      &std::free);
  if (!atom) return false;
  const std::unique_ptr<xcb_get_selection_owner_reply_t, decltype(&std::free)> owner(
      xcb_get_selection_owner_reply(server, xcb_get_selection_owner(server, atom->atom), nullptr),
      &std::free);
  return owner && owner->owner != XCB_WINDOW_NONE;
}

/// Whether a D-Bus notification area has said that it shows icons. Qt asks this once in the life of
/// a process: it must not ask before the answer is yes, or the icon never appears there.
bool hasDBusArea() {
  const QString service = QStringLiteral("org.kde.StatusNotifierWatcher");
  const QDBusConnectionInterface* bus = QDBusConnection::sessionBus().interface();
  if (bus == nullptr || !bus->isServiceRegistered(service)) return false;
  QDBusMessage question = QDBusMessage::createMethodCall(
      service, QStringLiteral("/StatusNotifierWatcher"),
      QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
  question << service << QStringLiteral("IsStatusNotifierHostRegistered");
  const QDBusMessage answer =
      QDBusConnection::sessionBus().call(question, QDBus::Block, kAnswerTime);
  return answer.arguments().value(0).value<QDBusVariant>().variant().toBool();
}

/// Whether there is a notification area, of either kind.
bool isThereAPlace() {
  if (hasDBusArea()) return true;
  const auto* x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
  xcb_connection_t* server = x11 != nullptr ? x11->connection() : nullptr;
  return server != nullptr && hasOwner(server, "_NET_SYSTEM_TRAY_S0");
}

}  // namespace

QtTrayIcon::QtTrayIcon(std::string tip, std::function<void()> onRightButtonUp)
    : tip_(std::move(tip)), onRightButtonUp_(std::move(onRightButtonUp)) {
  search_.setInterval(kSearchInterval);
  connect(&search_, &QTimer::timeout, this, &QtTrayIcon::appear);
  search_.start();
  appear();
}

QtTrayIcon::~QtTrayIcon() = default;

void QtTrayIcon::appear() {
  if (!isThereAPlace()) return;
  search_.stop();
  icon_.emplace();
  connect(&*icon_, &QSystemTrayIcon::activated, this, &QtTrayIcon::activate);
  change(image_, std::string(tip_));
  icon_->show();
}

void QtTrayIcon::change(TrayImage image, std::string tip) {
  image_ = image;
  tip_ = std::move(tip);
  if (!icon_) return;
  icon_->setIcon(qtTrayImage(image_));
  icon_->setToolTip(toQt(tip_));
}

void QtTrayIcon::activate(QSystemTrayIcon::ActivationReason reason) {
  if (reason != QSystemTrayIcon::Context) return;
  // An icon of this process is told of the press, a D-Bus host reports the finished click.
  if (QGuiApplication::mouseButtons().testFlag(Qt::RightButton)) {
    QCoreApplication::instance()->installEventFilter(this);
  } else {
    report();
  }
}

bool QtTrayIcon::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::MouseButtonRelease || !watched->isWidgetType()) return false;
  const auto& release = static_cast<const QMouseEvent&>(*event);
  if (release.button() != Qt::RightButton) return false;
  QCoreApplication::instance()->removeEventFilter(this);
  const QRect over = static_cast<const QWidget*>(watched)->rect();
  if (over.contains(release.position().toPoint())) report();
  return false;
}

void QtTrayIcon::report() {
  // Queued: the handler opens a menu, and the event or the D-Bus call must be finished before.
  QMetaObject::invokeMethod(
      this, [this] { onRightButtonUp_(); }, Qt::QueuedConnection);
}

}  // namespace karvel
