#pragma once

#include <QApplication>
#include <QSocketNotifier>
#include <QTranslator>
#include <map>
#include <memory>

#include "platform/desktop.h"
#include "platform/linux/desktop/qt_form_window.h"
#include "platform/linux/desktop/qt_tray_icon.h"
#include "platform/linux/system/end_signals.h"

namespace karvel {

/// The desktop by Qt Widgets. Without a display there are timers and the message loop; windows must
/// not be asked for then.
class QtDesktop final : public Desktop {
 public:
  /// See qt_display.h.
  explicit QtDesktop(bool hasDisplay);
  ~QtDesktop() override;

  bool hasDisplay() const override { return hasDisplay_; }
  void bind(Form& form) override;
  void release(Form& form) override;
  void showModal(Form& dialog, Form& owner) override;
  void setBusy(Form& form, bool busy) override;
  void bringToForeground(Form& form) override;
  void messageBox(Form& owner, const std::string& title, const std::string& text) override;
  std::string browseForFolder(Form& owner, const std::string& title,
                              const std::string& start) override;
  void addTrayIcon(Form& owner, TrayImage image, const std::string& tip,
                   std::function<void()> onRightButtonUp) override;
  void changeTrayIcon(TrayImage image, const std::string& tip) override;
  void removeTrayIcon() override;
  void popupMenu(Form& owner, const std::vector<MenuItem*>& items) override;
  std::unique_ptr<Timer> createTimer(std::chrono::milliseconds interval,
                                     std::function<void()> onTick) override;
  void processPendingMessages() override;
  void setEndSessionHandler(std::function<void()> handler) override;
  void run() override;
  void quit() override;

 private:
  /// What QApplication refers to for as long as it lives. The program's own arguments are none of
  /// Qt's.
  struct Arguments {
    int count = 1;
    char name[7] = "karvel";
    char* values[2] = {name, nullptr};
  };

  void setUpWindows();
  void endSession();
  [[nodiscard]] bool canAsk(const Form& owner) const { return !quitting_ && owner.takesInput(); }
  void openTrayMenu(const std::function<void()>& onRightButtonUp);
  /// The form's window while it is on the screen, or nullptr.
  [[nodiscard]] QtFormWindow* visibleWindow(const Form& form) const;

  EndSignals& endSignals_;  // first: their effect is blocked in Qt's threads, too
  Arguments arguments_;
  bool hasDisplay_;
  std::unique_ptr<QCoreApplication> application_;
  QTranslator translator_;
  QSocketNotifier endSignalNotifier_;
  std::map<const Form*, std::unique_ptr<QtFormView>> views_;
  const Form* trayOwner_ = nullptr;
  std::unique_ptr<QtTrayIcon> trayIcon_;
  std::function<void()> endSessionHandler_;
  bool quitting_ = false;
};

}  // namespace karvel
