#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
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

/// A window as far as the form has told it what to show.
class FakeWindow final : public FormView {
 public:
  explicit FakeWindow(Form& form) : form_(form) {
    for (const auto& control : form.controls()) controlChanged(*control);
    formChanged();
    form.setView(this);
  }
  FakeWindow(const FakeWindow&) = delete;
  FakeWindow& operator=(const FakeWindow&) = delete;
  ~FakeWindow() override { form_.setView(nullptr); }

  void formChanged() override { frame_ = frameOf(form_); }
  void controlChanged(Control& control) override { shown_[&control] = contentOf(control); }
  /// The names of the controls that it shows otherwise than the form has them.
  [[nodiscard]] std::string differences() const {
    std::string names = frame_ == frameOf(form_) ? "" : form_.table().name;
    for (const auto& control : form_.controls()) {
      if (shown_.at(control.get()) != contentOf(*control)) names += control->row().name;
    }
    return names;
  }

 private:
  using Frame = std::tuple<std::string, bool, WindowState, bool>;
  static Frame frameOf(const Form& form) {
    return {form.caption(), form.visible(), form.windowState(), form.topmost()};
  }
  using Content = std::tuple<bool, bool, int, std::size_t, std::size_t, std::string, std::string>;
  static Content contentOf(const Control& control) {
    return {
        control.enabled(),         control.selected(), control.value(), control.selectionStart(),
        control.selectionLength(), control.caption(),  control.text()};
  }

  Form& form_;
  Frame frame_;
  std::map<const Control*, Content> shown_;
};

/// A desktop that records what it is asked to show, and plays the user through hooks.
class FakeDesktop final : public Desktop {
 public:
  struct MessageBox {
    std::string title;
    std::string text;
    bool operator==(const MessageBox&) const = default;
  };

  std::function<void(Form&)> onModal;  ///< the user in a modal dialog, before it is closed
  std::function<void()> onMessageBox;  ///< what happens while a message box is open
  std::function<void()> onPending;     ///< a message waiting in the queue
  std::function<void()> onBusyEnd;     ///< before waiting clicks and keys are discarded
  std::string chosenFolder;            ///< answer of the folder dialog
  std::string folderDialogs;           ///< of those shown: title and where they began
  std::vector<MessageBox> messageBoxes;
  int modals = 0;                 ///< dialogs shown so far
  std::optional<TrayImage> tray;  ///< the icon, while there is one
  std::string trayTip;
  std::function<void()> trayRightButtonUp;
  std::vector<MenuItem*> openMenu;
  std::function<void()> endSession;
  FakeTimer* timer = nullptr;  ///< the last one made
  std::map<const Form*, std::unique_ptr<FakeWindow>> windows;
  std::string differences;  ///< of the dialogs' windows
  bool busy = false;
  bool hasQuit = false;

  bool hasDisplay() const override { return true; }
  ~FakeDesktop() override { EXPECT_TRUE(windows.empty()) << "not released"; }
  void bind(Form& form) override { windows[&form] = std::make_unique<FakeWindow>(form); }
  void release(Form& form) override { windows.erase(&form); }
  void showModal(Form& dialog, Form& owner) override {
    const DialogScope open(owner, dialog);
    const FakeWindow shown(dialog);
    ++modals;
    dialog.setVisible(true);
    if (onModal) onModal(dialog);
    differences += shown.differences();
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
    folderDialogs += title + " " + start;
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
