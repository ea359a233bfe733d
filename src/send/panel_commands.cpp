#include "send/panel_commands.h"

#include <utility>

#include "ui/grp_form.h"

namespace karvel {

PanelCommands::PanelCommands(FtpForm& form, SendRun& sendRun, SendSettings& sendSettings,
                             IniRedWrt& settings, Desktop& desktop, std::string programFolder)
    : form_(form),
      sendRun_(sendRun),
      sendSettings_(sendSettings),
      settings_(settings),
      desktop_(desktop),
      programFolder_(std::move(programFolder)) {
}

void PanelCommands::Command1_Click(int index) {
  using Command = FtpForm::Command;
  if (form_.closed()) return;
  switch (index) {
    case Command::kCancel:
      stayOrEnd();
      break;
    case Command::kOk:
      sendSettings_.Save_FtpInfo();
      stayOrEnd();
      break;
    case Command::kSend:
      runFromPanel(SendMode::kManual);
      break;
    case Command::kTest:
      runFromPanel(SendMode::kConnectionTest);
      break;
    case Command::kGroup:
      registerGroup();
      break;
    default:
      break;
  }
}

void PanelCommands::MyMenu_Send_Click() {
  form_.SndNG = false;
  form_.disableCommands();
  form_.Timer1->setEnabled(false);
  sendRun_.Snd(SendMode::kUnattended);
  if (form_.closed()) return;
  form_.Timer1->setEnabled(true);
  form_.enableCommands();
}

void PanelCommands::runFromPanel(SendMode mode) {
  if (!form_.shopCodeValid()) {
    desktop_.messageBox(form_, form_.caption(), "店舗コードが不明です。　　");
    return;
  }
  form_.SndNG = false;
  form_.disableCommands();
  {
    // A second click, or one of an impatient user, must not start the next run.
    const BusyScope busy(desktop_, form_);
    sendRun_.Snd(mode);
  }
  form_.enableCommands();
}

void PanelCommands::stayOrEnd() {
  if (!form_.residentAllowed()) {
    unloadMainForm();
    return;
  }
  form_.setWindowState(WindowState::kMinimized);
  form_.Timer1->setEnabled(true);
}

void PanelCommands::registerGroup() {
  using Field = FtpForm::Field;
  GrpForm dialog(form_, settings_, programFolder_);
  for (const auto field :
       {Field::kShopCode, Field::kShopName, Field::kGroupCode, Field::kGroupName}) {
    dialog.Text1[field].setText(form_.text(field));
  }
  desktop_.showModal(dialog, form_);
  desktop_.processPendingMessages();
  form_.showShopCaption();
}

}  // namespace karvel
