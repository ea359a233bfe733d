#include "shell/scheduler.h"

#include <array>

#include "text/numeric_value.h"

namespace karvel {
namespace {

constexpr std::array kIntervals{
    SendInterval{1, 150, 60},
    SendInterval{2, 450, 360},
    SendInterval{3, 900, 810},
    SendInterval{4, 1800, 1710},
};

/// At or above every threshold, so that an exit request sends once more.
constexpr std::int16_t kElapsed = 1800;
constexpr double kWithGroupDialog = 2;

}  // namespace

std::optional<SendInterval> SendInterval::of(const std::string& ftpTime) {
  const double value = numericValue(ftpTime);
  for (const SendInterval& interval : kIntervals) {
    if (value == interval.option) return interval;
  }
  return std::nullopt;
}

void Scheduler::Timer1_Timer() {
  form_.Timer1->setEnabled(false);
  if (request("FTP EXIT") != 0) form_.TimerCount = kElapsed;
  countTick();
  if (form_.closed()) return;  // the session has ended in front of a message of the run

  // A request that has come during a long send run counts too.
  if (request("FTP EXIT") != 0) {
    window_.unloadMainForm();
    return;
  }
  const double settingsRequest = request("FTP INIT");
  if (settingsRequest != 0) {
    showSettings(settingsRequest);
  } else {
    form_.Timer1->setEnabled(true);
  }
}

void Scheduler::countTick() {
  ++form_.TimerCount;
  const auto interval = SendInterval::of(settings_.readOwn("FTP TIME"));
  if (!interval) {
    form_.TimerCount = 0;
  } else if (interval->threshold <= form_.TimerCount) {
    sendRun_.Snd(SendMode::kUnattended);
  }
}

void Scheduler::showSettings(double request) {
  settings_.writeOwn("FTP INIT", "0");
  if (form_.windowState() == WindowState::kMinimized) window_.Task_Remove();
  if (request != kWithGroupDialog) return;
  commands_.Command1_Click(FtpForm::Command::kGroup);
  commands_.Command1_Click(FtpForm::Command::kCancel);
}

double Scheduler::request(const char* key) {
  return numericValue(settings_.readOwn(key));
}

}  // namespace karvel
