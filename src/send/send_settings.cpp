#include "send/send_settings.h"

#include <array>
#include <string>

#include "send/send_interval.h"
#include "text/strings.h"

namespace karvel {
namespace {

using Destination = FtpForm::Destination;

/// The saved texts, in the order of saving.
constexpr std::array kSavedTexts{
    own::kOutputFolder, own::kServer, own::kSiteFolder, own::kAccount, own::kPassword, own::kPort,
};

}  // namespace

void SendSettings::Save_FtpInfo() {
  writeDestination();
  withdrawFlags();
  presetTimer();
}

void SendSettings::writeDestination() {
  settings_.write(own::kDestination, std::to_string(form_.destination()));
  for (const OwnKey& key : kSavedTexts) {
    settings_.write(key, trimmed(form_.Text1[key.field].text()));
  }
  settings_.write(own::kPassive, std::to_string(form_.chkPassive.value()));
}

void SendSettings::withdrawFlags() {
  const int destination = form_.destination();
  const bool unused = !form_.shopCodeValid() || destination == Destination::kNone;
  const bool incomplete = !form_.destinationComplete();
  if (unused || (incomplete && destination == Destination::kOutputFolder)) {
    settings_.write(own::kFolderReached, "0");
  }
  if (unused || (incomplete && destination == Destination::kUserSite)) {
    settings_.write(own::kSiteReached, "0");
  }
}

void SendSettings::presetTimer() {
  const SendInterval& interval = SendInterval::of(form_.interval());
  form_.TimerCount = interval.countAfterSave;
  settings_.write(own::kInterval, std::to_string(interval.option));
}

}  // namespace karvel
