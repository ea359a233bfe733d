#include "shell/start_up.h"

#include <utility>

#include "send/send_interval.h"
#include "text/numeric_value.h"
#include "text/strings.h"

namespace karvel {
namespace {

using Field = FtpForm::Field;
using Destination = FtpForm::Destination;

constexpr int kTabStop = 100;  // dialog units

std::string withoutBlanks(const std::string& text) {
  return std::string(trimmed(text));
}

}  // namespace

StartUp::StartUp(FtpForm& form, IniRedWrt& settings, PanelCommands& commands,
                 WindowLifecycle& window, Desktop& desktop, Instance& instance,
                 std::string programFolder)
    : form_(form),
      settings_(settings),
      commands_(commands),
      window_(window),
      desktop_(desktop),
      instance_(instance),
      programFolder_(std::move(programFolder)) {
}

StartOutcome StartUp::Form_Load(const std::string& commandLine) {
  if (!instance_.acquire(programFolder_)) return endAtOnce();

  form_.SndNG = false;
  form_.MsgLabel.setCaption("");
  form_.lstFiles.setTabStops({kTabStop, kTabStop, kTabStop});

  prepareOwnSettings();
  if (!locateTicketApplication()) return endAtOnce();

  selectDestination();
  fillFields();
  selectInterval();
  form_.showShopCaption();
  return actOn(commandLine);
}

void StartUp::prepareOwnSettings() {
  if (!settings_.locateOwnIni(programFolder_)) settings_.createOwnIni(programFolder_);
  window_.deleteWorkFiles();
  settings_.write(own::kExitRequest, "0");
  settings_.write(own::kPanelRequest, "0");
}

bool StartUp::locateTicketApplication() {
  const bool found = settings_.locateTicketIni(programFolder_);
  settings_.removeLeftovers();
  if (found) return true;
  desktop_.messageBox(form_, form_.caption(), "発券システムの情報が見つかりません。　　\r\n");
  return false;
}

void StartUp::selectDestination() {
  Control& serviceSite = form_.Option2[Destination::kServiceSite];
  if (!settings_.read(ticket::kDomain).empty()) serviceSite.setEnabled(true);

  const double type = numericValue(settings_.read(own::kDestination));
  int selected = Destination::kNone;
  for (const int destination :
       {Destination::kOutputFolder, Destination::kUserSite, Destination::kServiceSite}) {
    if (type == destination) selected = destination;
  }
  if (selected == Destination::kServiceSite && !serviceSite.enabled())
    selected = Destination::kNone;
  form_.Option2[selected].select();
}

void StartUp::fillFields() {
  for (const OwnKey& key : own::kInitialKeys) {
    if (key.field == OwnKey::kNoField) continue;
    form_.Text1[key.field].setText(withoutBlanks(settings_.read(key)));
  }
  form_.Text1[Field::kShopName].setText(withoutBlanks(settings_.read(ticket::kShopName)));
  form_.chkPassive.setValue(numericValue(settings_.read(own::kPassive)) != 0 ? 1 : 0);
}

void StartUp::selectInterval() {
  const SendInterval& interval = SendInterval::of(settings_.read(own::kInterval));
  form_.Option1[interval.option].select();
  form_.TimerCount = interval.countAfterStart;
}

StartOutcome StartUp::actOn(const std::string& commandLine) {
  if (commandLine == kShowGroupDialog) {
    commands_.Command1_Click(FtpForm::Command::kGroup);
    return endAtOnce();
  }
  if (commandLine == kShowPanel) {
    form_.setVisible(true);
    return StartOutcome::kPanel;
  }
  if (!form_.residentAllowed()) return endAtOnce();
  form_.setWindowState(WindowState::kMinimized);
  return StartOutcome::kResident;
}

StartOutcome StartUp::endAtOnce() {
  window_.Form_QueryUnload();
  return StartOutcome::kEnded;
}

}  // namespace karvel
