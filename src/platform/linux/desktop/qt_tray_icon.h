#pragma once

#include <QObject>
#include <QSystemTrayIcon>
#include <QTimer>
#include <functional>
#include <optional>
#include <string>

#include "platform/desktop.h"

namespace karvel {

/// The program's icon in the notification area, from construction to destruction. It appears as
/// soon as there is a notification area, and again when that has been started anew.
class QtTrayIcon final : public QObject {
 public:
  QtTrayIcon(std::string tip, std::function<void()> onRightButtonUp);
  ~QtTrayIcon() override;

  void change(TrayImage image, std::string tip);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void appear();
  void activate(QSystemTrayIcon::ActivationReason reason);
  void report();

  TrayImage image_ = TrayImage::kNormal;
  std::string tip_;
  std::optional<QSystemTrayIcon> icon_;  ///< once there is a place for it
  QTimer search_;                        ///< for that place
  std::function<void()> onRightButtonUp_;
};

}  // namespace karvel
