#pragma once

#include <chrono>
#include <list>
#include <vector>

#include "platform/desktop.h"
#include "platform/linux/system/end_signals.h"

namespace karvel {

/// The desktop of a machine without a display: timers and the message loop work, windows exist as
/// data only.
class HeadlessDesktop final : public Desktop {
 public:
  HeadlessDesktop();
  ~HeadlessDesktop() override;

  bool hasDisplay() const override { return false; }
  void bind(Form& form) override;
  void release(Form& form) override;
  void showModal(Form& dialog, Form& owner) override;
  void discardInput(Form& form) override;
  void bringToForeground(Form& form) override;
  void messageBox(Form& owner, const std::string& title, const std::string& text) override;
  std::string browseForFolder(Form& owner, const std::string& title) override;
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
  class HeadlessTimer;
  void minimizeShownForms();
  void handleEndRequest();
  void waitForNextEvent();
  void runDueTimers();

  EndSignals& endSignals_;  // taken over at once: one that comes during the start waits
  std::vector<Form*> forms_;
  std::list<HeadlessTimer*> timers_;
  std::function<void()> endSessionHandler_;
  bool quitting_ = false;
};

}  // namespace karvel
