#pragma once

#include <windows.h>

#include <map>
#include <memory>

#include "platform/desktop.h"
#include "platform/windows/desktop/win32_form_window.h"
#include "platform/windows/desktop/win32_service_window.h"
#include "platform/windows/desktop/win32_tray_icon.h"

namespace karvel {

/// The desktop by Win32 windows. Where the system can show none, only its timers and its message
/// loop may be used.
class Win32Desktop final : public Desktop {
 public:
  Win32Desktop();
  ~Win32Desktop() override;

  bool hasDisplay() const override { return service_.canShowWindows(); }
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
  class ModalScope;

  void runWhile(const std::function<bool()>& wanted);
  void dispatch(MSG& message);
  /// Someone has asked the message loop to end.
  void answerQuitMessage();
  void endSession();
  void discardInput(const Form& form);
  [[nodiscard]] bool canAsk(const Form& owner) const { return !quitting_ && owner.takesInput(); }

  /// The form's window, or nullptr when it has been released.
  [[nodiscard]] Win32FormWindow* windowOf(const Form& form) const;
  /// The form's window of that handle, or nullptr.
  [[nodiscard]] Win32FormWindow* windowAt(HWND handle) const;
  /// The handle of the form's window while it is on the screen, or nullptr.
  [[nodiscard]] HWND visibleWindow(const Form& form) const;

  Win32ServiceWindow service_;
  std::map<const Form*, std::unique_ptr<Win32FormWindow>> windows_;
  Win32FormWindow* trayOwner_ = nullptr;
  std::unique_ptr<Win32TrayIcon> trayIcon_;  // goes before the window whose procedure it holds
  std::function<void()> endSessionHandler_;
  int modalDepth_ = 0;
  bool quitting_ = false;
};

}  // namespace karvel
