#pragma once

#include <memory>
#include <vector>

#include "platform/desktop.h"

namespace karvel {

/// Shows nothing, and nobody answers: forms are data only. No timer ticks, and the message loop
/// ends at once.
class UnseenDesktop : public Desktop {
 public:
  bool hasDisplay() const override { return false; }
  void bind(Form&) override {}
  void release(Form&) override {}
  void showModal(Form& dialog, Form&) override { dialog.close(); }
  void setBusy(Form&, bool) override {}
  void bringToForeground(Form&) override {}
  void messageBox(Form&, const std::string&, const std::string&) override {}
  std::string browseForFolder(Form&, const std::string&, const std::string&) override { return {}; }
  void addTrayIcon(Form&, TrayImage, const std::string&, std::function<void()>) override {}
  void changeTrayIcon(TrayImage, const std::string&) override {}
  void removeTrayIcon() override {}
  void popupMenu(Form&, const std::vector<MenuItem*>&) override {}
  std::unique_ptr<Timer> createTimer(std::chrono::milliseconds interval,
                                     std::function<void()> onTick) override;
  void processPendingMessages() override {}
  void setEndSessionHandler(std::function<void()>) override {}
  void run() override {}
  void quit() override {}
};

/// The desktop of a host without a display. Timers and the message loop are those of the platform's
/// desktop, which is asked for no window; messages go to standard error.
class HeadlessDesktop final : public UnseenDesktop {
 public:
  explicit HeadlessDesktop(std::unique_ptr<Desktop> platform) : platform_(std::move(platform)) {}

  void bind(Form& form) override { forms_.push_back(&form); }
  void release(Form& form) override { std::erase(forms_, &form); }
  void messageBox(Form&, const std::string& title, const std::string& text) override;
  std::unique_ptr<Timer> createTimer(std::chrono::milliseconds interval,
                                     std::function<void()> onTick) override;
  void processPendingMessages() override;
  void setEndSessionHandler(std::function<void()> handler) override;
  void run() override;
  void quit() override { platform_->quit(); }

 private:
  void minimizeShownForms();

  std::unique_ptr<Desktop> platform_;
  std::vector<Form*> forms_;
};

}  // namespace karvel
