#include "platform/linux/desktop/qt_tray_icon.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QWidget>
#include <utility>

#include "platform/linux/desktop/qt_images.h"
#include "platform/linux/desktop/qt_text.h"

namespace karvel {

QtTrayIcon::QtTrayIcon(TrayImage image, const std::string& tip,
                       std::function<void()> onRightButtonUp)
    : onRightButtonUp_(std::move(onRightButtonUp)) {
  connect(&icon_, &QSystemTrayIcon::activated, this, &QtTrayIcon::activate);
  change(image, tip);
  icon_.show();
}

QtTrayIcon::~QtTrayIcon() = default;

void QtTrayIcon::change(TrayImage image, const std::string& tip) {
  icon_.setIcon(qtTrayImage(image));
  icon_.setToolTip(toQt(tip));
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
