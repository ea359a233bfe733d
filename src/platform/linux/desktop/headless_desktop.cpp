#include "platform/linux/desktop/headless_desktop.h"

#include <poll.h>

#include <algorithm>
#include <iostream>
#include <optional>

namespace karvel {

using SteadyClock = std::chrono::steady_clock;

class HeadlessDesktop::HeadlessTimer final : public Timer {
 public:
  HeadlessTimer(HeadlessDesktop& desktop, std::chrono::milliseconds interval,
                std::function<void()> onTick)
      : desktop_(desktop), interval_(interval), onTick_(std::move(onTick)) {
    desktop_.timers_.push_back(this);
  }
  ~HeadlessTimer() override { desktop_.timers_.remove(this); }

  void setEnabled(bool enabled) override {
    due_ = enabled ? std::optional(SteadyClock::now() + interval_) : std::nullopt;
  }

  [[nodiscard]] std::optional<SteadyClock::time_point> due() const { return due_; }

  void tick() {
    setEnabled(true);
    onTick_();
  }

 private:
  HeadlessDesktop& desktop_;
  std::chrono::milliseconds interval_;
  std::function<void()> onTick_;
  std::optional<SteadyClock::time_point> due_;
};

HeadlessDesktop::HeadlessDesktop() : endSignals_(endSignals()) {
}
HeadlessDesktop::~HeadlessDesktop() = default;

void HeadlessDesktop::bind(Form& form) {
  forms_.push_back(&form);
}

void HeadlessDesktop::release(Form& form) {
  std::erase(forms_, &form);
}

void HeadlessDesktop::showModal(Form& dialog, Form&) {
  dialog.close();
}

void HeadlessDesktop::discardInput(Form&) {
}

void HeadlessDesktop::bringToForeground(Form&) {
}

void HeadlessDesktop::messageBox(Form&, const std::string& title, const std::string& text) {
  std::cerr << title << ": " << text << std::endl;
}

std::string HeadlessDesktop::browseForFolder(Form&, const std::string&) {
  return {};
}

void HeadlessDesktop::addTrayIcon(Form&, TrayImage, const std::string&, std::function<void()>) {
}
void HeadlessDesktop::changeTrayIcon(TrayImage, const std::string&) {
}
void HeadlessDesktop::removeTrayIcon() {
}
void HeadlessDesktop::popupMenu(Form&, const std::vector<MenuItem*>&) {
}

std::unique_ptr<Timer> HeadlessDesktop::createTimer(std::chrono::milliseconds interval,
                                                    std::function<void()> onTick) {
  return std::make_unique<HeadlessTimer>(*this, interval, std::move(onTick));
}

void HeadlessDesktop::processPendingMessages() {
  minimizeShownForms();
  handleEndRequest();
  runDueTimers();
}

void HeadlessDesktop::setEndSessionHandler(std::function<void()> handler) {
  endSessionHandler_ = std::move(handler);
}

void HeadlessDesktop::run() {
  while (!quitting_) {
    processPendingMessages();
    if (!quitting_) waitForNextEvent();
  }
}

void HeadlessDesktop::quit() {
  quitting_ = true;
}

void HeadlessDesktop::minimizeShownForms() {
  for (Form* form : std::vector<Form*>(forms_)) {
    if (form->visible()) form->setWindowState(WindowState::kMinimized);
  }
}

void HeadlessDesktop::handleEndRequest() {
  if (!endSignals_.take()) return;
  if (endSessionHandler_) endSessionHandler_();
}

void HeadlessDesktop::waitForNextEvent() {
  std::optional<SteadyClock::time_point> next;
  for (const HeadlessTimer* timer : timers_) {
    if (timer->due() && (!next || *timer->due() < *next)) next = timer->due();
  }
  int timeout = -1;
  if (next) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*next - SteadyClock::now());
    timeout = static_cast<int>(std::max<std::int64_t>(left.count(), 0));
  }
  pollfd descriptor{endSignals_.descriptor(), POLLIN, 0};
  poll(&descriptor, 1, timeout);
}

void HeadlessDesktop::runDueTimers() {
  const auto now = SteadyClock::now();
  for (HeadlessTimer* timer : std::list<HeadlessTimer*>(timers_)) {
    const bool alive = std::find(timers_.begin(), timers_.end(), timer) != timers_.end();
    if (alive && timer->due() && *timer->due() <= now) timer->tick();
  }
}

}  // namespace karvel
