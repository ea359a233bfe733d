#include "ui/ftp_form.h"

#include <algorithm>
#include <limits>

#include "text/numeric_value.h"
#include "text/strings.h"
#include "ui/user_form.h"

namespace karvel {
FtpForm::FtpForm(IniRedWrt& settings, Desktop& desktop)
    : Form(kFtpFormTable),
      Text1(*this, "Text1"),
      Option1(*this, "Option1"),
      Option2(*this, "Option2"),
      Command1(*this, "Command1"),
      Command3(control("Command3")),
      Command4(control("Command4")),
      chkPassive(control("chkPassive")),
      OutputFolderLabel(control("Label1", 10)),
      MsgLabel(control("MsgLabel")),
      lstFiles(control("lstFiles")),
      Timer1(desktop.createTimer(kTimerInterval,
                                 [this] {
                                   if (onTimer1) onTimer1();
                                 })),
      settings_(settings),
      desktop_(desktop) {
  for (Control* field : Text1.all()) {
    const int index = field->row().index;
    field->onChange = [this, index] { Text1_Change(index); };
    field->onFocus = [this, index] { Text1_GotFocus(index); };
  }
  for (Control* option : Option2.all()) {
    const int index = option->row().index;
    option->onClick = [this, index] { Option2_Click(index); };
  }
  Command3.onClick = [this] { Command3_Click(); };
  Command4.onClick = [this] { Command4_Click(); };
}

void FtpForm::lowerTimerCount(int ticks) {
  constexpr int kLowest = std::numeric_limits<std::int16_t>::min();
  TimerCount = static_cast<std::int16_t>(std::max(TimerCount - ticks, kLowest));
}

void FtpForm::clsFtp_FTPFrr(std::int32_t ErrNumber, const std::string& ErrString) {
  LastFtpError = fixedWidth(std::to_string(ErrNumber) + "/" + ErrString, kErrorTextWidth);
}

void FtpForm::Option2_Click(int index) {
  const bool folder = index == Destination::kOutputFolder;
  OutputFolderLabel.setEnabled(folder);
  Text1[Field::kOutputFolder].setEnabled(folder);
  Command3.setEnabled(folder);
  Command4.setEnabled(index == Destination::kUserSite);
  Text1_Change(Field::kServer);
}

void FtpForm::Text1_Change(int) {
  Command1[Command::kTest].setEnabled(connectionTestAllowed());
  const bool sendAllowed = residentAllowed();
  Command1[Command::kSend].setEnabled(sendAllowed);
  MyMenu_Send.enabled = sendAllowed;
}

void FtpForm::Text1_GotFocus(int index) {
  Text1[index].setSelection(0, characterCount(Text1[index].text()));
}

void FtpForm::Command3_Click() {
  const std::string folder =
      desktop_.browseForFolder(*this, "フォルダの選択", text(Field::kOutputFolder));
  if (!folder.empty()) Text1[Field::kOutputFolder].setText(folder);
}

void FtpForm::Command4_Click() {
  UserForm dialog(Text1, chkPassive);
  desktop_.showModal(dialog, *this);
  Text1_Change(Field::kServer);
}

FtpForm::Destination::Index FtpForm::destination() const {
  for (const auto each :
       {Destination::kOutputFolder, Destination::kUserSite, Destination::kServiceSite}) {
    if (Option2[each].selected()) return each;
  }
  return Destination::kNone;
}

int FtpForm::interval() const {
  for (const Control* option : Option1.all()) {
    if (option->selected()) return option->row().index;
  }
  return Interval::kManual;
}

bool FtpForm::shopCodeValid() const {
  return numericValue(text(Field::kShopCode)) > 0;
}

bool FtpForm::destinationComplete() const {
  switch (destination()) {
    case Destination::kOutputFolder:
      return !text(Field::kOutputFolder).empty();
    case Destination::kUserSite:
      return !text(Field::kServer).empty() && !text(Field::kAccount).empty() &&
             !text(Field::kPassword).empty();
    default:
      return true;
  }
}

bool FtpForm::destinationConfirmed() {
  switch (destination()) {
    case Destination::kOutputFolder:
      return numericValue(settings_.read(own::kFolderReached)) == 1;
    case Destination::kUserSite:
      return numericValue(settings_.read(own::kSiteReached)) == 1;
    case Destination::kServiceSite:
      return serviceSiteAvailable();
    default:
      return false;
  }
}

bool FtpForm::connectionTestAllowed() {
  const auto chosen = destination();
  return shopCodeValid() && chosen != Destination::kNone && destinationComplete() &&
         (chosen != Destination::kServiceSite || serviceSiteAvailable());
}

bool FtpForm::serviceSiteAvailable() {
  return !settings_.read(ticket::kDomain).empty();
}

void FtpForm::showShopCaption() {
  setCaption("ｸﾞﾙｰﾌﾟ:" + text(Field::kGroupCode) + "/" + text(Field::kGroupName) +
             " 店舗:" + text(Field::kShopCode) + "/" + text(Field::kShopName));
}

void FtpForm::disableCommands() {
  MyMenu_Send.enabled = false;
  for (Control* command : Command1.all()) command->setEnabled(false);
}

void FtpForm::enableCommands() {
  for (const auto index : {Command::kCancel, Command::kOk, Command::kTest, Command::kGroup}) {
    Command1[index].setEnabled(true);
  }
  Text1_Change(Field::kServer);
}

}  // namespace karvel
