#include "app/headless_desktop.h"

#include <iostream>
#include <utility>

namespace karvel {

std::unique_ptr<Timer> UnseenDesktop::createTimer(std::chrono::milliseconds,
                                                  std::function<void()>) {
  class StoppedTimer final : public Timer {
    void setEnabled(bool) override {}
  };
  return std::make_unique<StoppedTimer>();
}

void HeadlessDesktop::messageBox(Form&, const std::string& title, const std::string& text) {
  std::cerr << title << ": " << text << std::endl;
}

std::unique_ptr<Timer> HeadlessDesktop::createTimer(std::chrono::milliseconds interval,
                                                    std::function<void()> onTick) {
  return platform_->createTimer(interval, std::move(onTick));
}

void HeadlessDesktop::processPendingMessages() {
  minimizeShownForms();
  platform_->processPendingMessages();
}

void HeadlessDesktop::setEndSessionHandler(std::function<void()> handler) {
  platform_->setEndSessionHandler(std::move(handler));
}

void HeadlessDesktop::run() {
  minimizeShownForms();
  platform_->run();
}

void HeadlessDesktop::minimizeShownForms() {
  for (Form* form : std::vector<Form*>(forms_)) {
    if (form->visible()) form->setWindowState(WindowState::kMinimized);
  }
}

}  // namespace karvel
