#pragma once

#include <QObject>
#include <QSystemTrayIcon>
#include <functional>
#include <string>

#include "platform/desktop.h"

namespace karvel {

/// The program's icon in the notification area, from construction to destruction. It appears as
/// soon as there is a notification area, and again when that has been started anew.
class QtTrayIcon final : public QObject {
 public:
  QtTrayIcon(TrayImage image, const std::string& tip, std::function<void()> onRightButtonUp);
  ~QtTrayIcon() override;

  void change(TrayImage image, const std::string& tip);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void activate(QSystemTrayIcon::ActivationReason reason);
  void report();

  QSystemTrayIcon icon_;
  std::function<void()> onRightButtonUp_;
};

}  // namespace karvel
