#include "shell/start_up.h"

#include <array>

#include "shell/scheduler.h"
#include "text/numeric_value.h"
#include "text/path.h"
#include "text/strings.h"

namespace karvel {
namespace {

using Field = FtpForm::Field;
using Destination = FtpForm::Destination;
using Interval = FtpForm::Interval;

constexpr int kTabStop = 100;  // dialog units

struct OwnField {
  Field::Index field;
  const char* key;
};

std::string withoutBlanks(const std::string& text) {
  return std::string(trimmed(text));
}

}  // namespace

StartUp::StartUp(FtpForm& form, IniRedWrt& settings, PanelCommands& commands,
                 WindowLifecycle& window, Platform& platform)
    : form_(form), settings_(settings), commands_(commands), window_(window), platform_(platform) {
}

StartOutcome StartUp::Form_Load() {
  if (!platform_.instance->acquire(platform_.programFolder)) return endAtOnce();

  form_.SndNG = false;
  form_.MsgLabel.setCaption("");
  form_.lstFiles.setTabStops({kTabStop, kTabStop, kTabStop});

  prepareOwnSettings();
  if (!locateTicketApplication()) return endAtOnce();

  selectDestination();
  fillFields();
  selectInterval();
  form_.showShopCaption();
  return actOnCommandLine();
}

void StartUp::prepareOwnSettings() {
  settings_.OwnIniPath = joinPath(platform_.programFolder, "karvel.hnb");
  if (!platform_.files->exists(settings_.OwnIniPath)) createOwnSettings();
  platform_.files->removeMatching(platform_.programFolder, "*.txt");
  settings_.writeOwn("FTP EXIT", "0");
  settings_.writeOwn("FTP INIT", "0");
}

void StartUp::createOwnSettings() {
  const struct {
    const char* key;
    std::string value;
  } defaults[] = {
      {"FTP SEVE", ""},  {"FTP FOLD", ""},      {"FTP NAME", ""},
      {"FTP PASS", ""},  {"FTP PORT", "21"},    {"FTP PSIV", "1"},
      {"FTP CODE", ""},  {"FTP TIME", "0"},     {"HST FOLD", platform_.programFolder},
      {"OUT FOLD", ""},  {"FTP TYPE", "3"},     {"FTP CHKC", "0"},
      {"FTP CHKF", "0"}, {"GRUP CODE", "9999"}, {"GRUP NAME", "るりはなリンク"},
  };
  for (const auto& [key, value] : defaults) settings_.writeOwn(key, value);
}

bool StartUp::locateTicketApplication() {
  settings_.locateTicketIni(platform_.programFolder);
  if (platform_.files->exists(settings_.TicketIniPath)) return true;
  platform_.desktop->messageBox(form_, form_.caption(),
                                "発券システムの情報が見つかりません。　　\r\n");
  return false;
}

void StartUp::selectDestination() {
  Control& serviceSite = form_.Option2[Destination::kServiceSite];
  if (!settings_.readTicket(section::kFtp, "DOMAIN").empty()) serviceSite.setEnabled(true);

  const double type = numericValue(settings_.readOwn("FTP TYPE"));
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
  constexpr std::array kOwnFields{
      OwnField{Field::kOutputFolder, "OUT FOLD"}, OwnField{Field::kServer, "FTP SEVE"},
      OwnField{Field::kSiteFolder, "FTP FOLD"},   OwnField{Field::kAccount, "FTP NAME"},
      OwnField{Field::kPassword, "FTP PASS"},     OwnField{Field::kPort, "FTP PORT"},
      OwnField{Field::kShopCode, "FTP CODE"},     OwnField{Field::kGroupCode, "GRUP CODE"},
      OwnField{Field::kGroupName, "GRUP NAME"},
  };
  for (const auto& [field, key] : kOwnFields) {
    form_.Text1[field].setText(withoutBlanks(settings_.readOwn(key)));
  }
  form_.Text1[Field::kShopName].setText(
      withoutBlanks(settings_.readTicket(section::kShop, "USER NAME")));
  form_.chkPassive.setValue(numericValue(settings_.readOwn("FTP PSIV")) != 0 ? 1 : 0);
}

void StartUp::selectInterval() {
  const auto interval = SendInterval::of(settings_.readOwn("FTP TIME"));
  form_.Option1[interval ? interval->option : Interval::kManual].select();
  form_.TimerCount = interval ? interval->startTimerCount : std::int16_t{0};
}

StartOutcome StartUp::actOnCommandLine() {
  if (platform_.commandLine == kShowGroupDialog) {
    commands_.Command1_Click(FtpForm::Command::kGroup);
    return endAtOnce();
  }
  if (platform_.commandLine == kShowPanel) {
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
