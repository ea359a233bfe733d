#include "shell/scheduler.h"

#include "send/send_interval.h"
#include "text/numeric_value.h"

namespace karvel {
namespace {

/// At or above every threshold, so that an exit request sends once more.
constexpr std::int16_t kElapsed = 1800;
constexpr double kWithGroupDialog = 2;

}  // namespace

void Scheduler::Timer1_Timer() {
  form_.Timer1->setEnabled(false);
  if (request(own::kExitRequest) != 0) form_.TimerCount = kElapsed;
  countTick();
  if (form_.closed()) return;  // the session ended while the run showed a message

  // Read again: the request may have come during a long send run.
  if (request(own::kExitRequest) != 0) {
    window_.unloadMainForm();
    return;
  }
  const double settingsRequest = request(own::kPanelRequest);
  if (settingsRequest != 0) {
    showSettings(settingsRequest);
  } else {
    form_.Timer1->setEnabled(true);
  }
}

void Scheduler::countTick() {
  ++form_.TimerCount;
  const SendInterval& interval = SendInterval::of(settings_.read(own::kInterval));
  if (!interval.unattended()) {
    form_.TimerCount = 0;
  } else if (interval.threshold <= form_.TimerCount) {
    sendRun_.Snd(SendMode::kUnattended);
  }
}

void Scheduler::showSettings(double request) {
  settings_.write(own::kPanelRequest, "0");
  if (form_.windowState() == WindowState::kMinimized) window_.Task_Remove();
  if (request != kWithGroupDialog) return;
  commands_.Command1_Click(FtpForm::Command::kGroup);
  commands_.Command1_Click(FtpForm::Command::kCancel);
}

double Scheduler::request(const OwnKey& key) {
  return numericValue(settings_.read(key));
}

}  // namespace karvel
