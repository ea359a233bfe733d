#include "platform/windows/windowless_desktop.h"

#include <windows.h>

#include <algorithm>
#include <iostream>
#include <optional>

namespace karvel {

using SteadyClock = std::chrono::steady_clock;

class WindowlessDesktop::WindowlessTimer final : public Timer {
 public:
  WindowlessTimer(WindowlessDesktop& desktop, std::chrono::milliseconds interval,
                  std::function<void()> onTick)
      : desktop_(desktop), interval_(interval), onTick_(std::move(onTick)) {
    desktop_.timers_.push_back(this);
  }
  ~WindowlessTimer() override { desktop_.timers_.remove(this); }

  void setEnabled(bool enabled) override {
    due_ = enabled ? std::optional(SteadyClock::now() + interval_) : std::nullopt;
  }
  bool enabled() const override { return due_.has_value(); }

  [[nodiscard]] std::optional<SteadyClock::time_point> due() const { return due_; }

  void tick() {
    setEnabled(true);
    onTick_();
  }

 private:
  WindowlessDesktop& desktop_;
  std::chrono::milliseconds interval_;
  std::function<void()> onTick_;
  std::optional<SteadyClock::time_point> due_;
};

void WindowlessDesktop::bind(Form& form) {
  forms_.push_back(&form);
}

void WindowlessDesktop::release(Form& form) {
  std::erase(forms_, &form);
}

void WindowlessDesktop::showModal(Form& dialog, Form&) {
  dialog.close();
}

void WindowlessDesktop::messageBox(Form&, const std::string& title, const std::string& text) {
  std::cerr << title << ": " << text << std::endl;
}

std::unique_ptr<Timer> WindowlessDesktop::createTimer(std::chrono::milliseconds interval,
                                                      std::function<void()> onTick) {
  return std::make_unique<WindowlessTimer>(*this, interval, std::move(onTick));
}

void WindowlessDesktop::processPendingMessages() {
  minimizeShownForms();
  takeMessages();
  runDueTimers();
}

void WindowlessDesktop::setEndSessionHandler(std::function<void()> handler) {
  endSessionHandler_ = std::move(handler);
}

void WindowlessDesktop::run() {
  while (!quitting_) {
    processPendingMessages();
    if (!quitting_) waitForNextEvent();
  }
}

void WindowlessDesktop::minimizeShownForms() {
  for (Form* form : std::vector<Form*>(forms_)) {
    if (form->visible()) form->setWindowState(WindowState::kMinimized);
  }
}

void WindowlessDesktop::takeMessages() {
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    if (message.message == WM_QUIT && endSessionHandler_) endSessionHandler_();
  }
}

void WindowlessDesktop::waitForNextEvent() {
  std::optional<SteadyClock::time_point> next;
  for (const WindowlessTimer* timer : timers_) {
    if (timer->due() && (!next || *timer->due() < *next)) next = timer->due();
  }
  DWORD timeout = INFINITE;
  if (next) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*next - SteadyClock::now());
    timeout = static_cast<DWORD>(std::max<std::int64_t>(left.count(), 0));
  }
  MsgWaitForMultipleObjectsEx(0, nullptr, timeout, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

void WindowlessDesktop::runDueTimers() {
  const auto now = SteadyClock::now();
  for (WindowlessTimer* timer : std::list<WindowlessTimer*>(timers_)) {
    const bool alive = std::find(timers_.begin(), timers_.end(), timer) != timers_.end();
    if (alive && timer->due() && *timer->due() <= now) timer->tick();
  }
}

}  // namespace karvel
