#pragma once

#include <chrono>
#include <list>
#include <vector>

#include "platform/desktop.h"

namespace karvel {

/// A desktop that shows nothing: timers and the message loop work, windows exist as data only. A
/// WM_QUIT message to the thread is the request to end.
class WindowlessDesktop final : public Desktop {
 public:
  bool hasDisplay() const override { return false; }
  void bind(Form& form) override;
  void release(Form& form) override;
  void showModal(Form& dialog, Form& owner) override;
  void bringToForeground(Form&) override {}
  void messageBox(Form& owner, const std::string& title, const std::string& text) override;
  std::string browseForFolder(Form&, const std::string&) override { return {}; }
  void addTrayIcon(Form&, TrayImage, const std::string&, std::function<void()>) override {}
  void changeTrayIcon(TrayImage, const std::string&) override {}
  void removeTrayIcon() override {}
  void popupMenu(Form&, const std::vector<MenuItem*>&) override {}
  std::unique_ptr<Timer> createTimer(std::chrono::milliseconds interval,
                                     std::function<void()> onTick) override;
  void processPendingMessages() override;
  void setEndSessionHandler(std::function<void()> handler) override;
  void run() override;
  void quit() override { quitting_ = true; }

 private:
  class WindowlessTimer;
  void minimizeShownForms();
  void takeMessages();
  void waitForNextEvent();
  void runDueTimers();

  std::vector<Form*> forms_;
  std::list<WindowlessTimer*> timers_;
  std::function<void()> endSessionHandler_;
  bool quitting_ = false;
};

}  // namespace karvel
