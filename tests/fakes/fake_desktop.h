#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/desktop.h"

namespace karvel {

class FakeTimer final : public Timer {
 public:
  explicit FakeTimer(std::function<void()> onTick) : onTick_(std::move(onTick)) {}
  void setEnabled(bool enabled) override { enabled_ = enabled; }
  [[nodiscard]] bool enabled() const { return enabled_; }
  /// What the platform does when the interval has passed.
  void pass() {
    if (enabled_) onTick_();
  }

 private:
  std::function<void()> onTick_;
  bool enabled_ = false;
};

/// A desktop that records what it is asked to show, and plays the user through hooks.
class FakeDesktop final : public Desktop {
 public:
  struct MessageBox {
    std::string title;
    std::string text;
    bool operator==(const MessageBox&) const = default;
  };

  std::function<void(Form&)> onModal;      ///< the user in a modal dialog, before it is closed
  std::function<void()> onMessageBox;      ///< what happens while a message box is open
  std::function<void()> onPending;         ///< a message waiting in the queue
  std::function<void()> onBusyEnd;         ///< before waiting clicks and keys are discarded
  std::string chosenFolder;                ///< answer of the folder dialog
  std::vector<std::string> folderDialogs;  ///< of those shown: title and where they began
  std::vector<MessageBox> messageBoxes;
  std::vector<std::string> modals;  ///< names of the dialogs shown
  std::optional<TrayImage> tray;    ///< the icon, while there is one
  std::string trayTip;
  std::function<void()> trayRightButtonUp;
  std::vector<MenuItem*> openMenu;
  std::function<void()> endSession;
  FakeTimer* timer = nullptr;  ///< the last one made
  bool busy = false;
  bool hasQuit = false;

  bool hasDisplay() const override { return true; }
  void bind(Form&) override {}
  void release(Form&) override {}
  void showModal(Form& dialog, Form& owner) override {
    const DialogScope open(owner, dialog);
    modals.emplace_back(dialog.table().name);
    dialog.setVisible(true);
    if (onModal) onModal(dialog);
    if (!dialog.closed()) dialog.close();
  }
  void setBusy(Form&, bool nowBusy) override {
    busy = nowBusy;
    if (!busy && onBusyEnd) onBusyEnd();
  }
  void bringToForeground(Form&) override {}
  void messageBox(Form&, const std::string& title, const std::string& text) override {
    messageBoxes.push_back({title, text});
    if (onMessageBox) onMessageBox();
  }
  std::string browseForFolder(Form&, const std::string& title, const std::string& start) override {
    folderDialogs.push_back(title + " " + start);
    return chosenFolder;
  }
  void addTrayIcon(Form&, TrayImage image, const std::string& tip,
                   std::function<void()> onRightButtonUp) override {
    tray = image;
    trayTip = tip;
    trayRightButtonUp = std::move(onRightButtonUp);
  }
  void changeTrayIcon(TrayImage image, const std::string& tip) override {
    if (tray) tray = image;
    trayTip = tip;
  }
  void removeTrayIcon() override {
    tray.reset();
    openMenu.clear();
  }
  void popupMenu(Form&, const std::vector<MenuItem*>& items) override { openMenu = items; }
  std::unique_ptr<Timer> createTimer(std::chrono::milliseconds,
                                     std::function<void()> onTick) override {
    auto made = std::make_unique<FakeTimer>(std::move(onTick));
    timer = made.get();
    return made;
  }
  void processPendingMessages() override {
    if (onPending) onPending();
  }
  void setEndSessionHandler(std::function<void()> handler) override {
    endSession = std::move(handler);
  }
  void run() override {}
  void quit() override { hasQuit = true; }
};

}  // namespace karvel
