#include "app/program.h"

namespace karvel {

Program::Program(Platform& p)
    : platform_(p),
      settings_(*p.profile, *p.files, *p.clock),
      log_(*p.files, *p.clock, p.programFolder),
      form_(settings_, *p.desktop),
      desks_(*p.files, settings_, p.programFolder),
      table_(form_, desks_, settings_, *p.files, *p.clock, p.programFolder),
      site_{form_, *p.internet, settings_, *p.files, log_, p.programFolder},
      folder_(form_, *p.files, *p.clock),
      shopInfo_(settings_, log_, *p.files, p.programFolder),
      export_(form_, shopInfo_, table_, *p.files, *p.clock, log_, p.programFolder),
      sendSettings_(form_, settings_),
      sendRun_(form_, export_, folder_, site_, sendSettings_, log_, *p.desktop),
      commands_(form_, sendRun_, sendSettings_, settings_, *p.desktop, p.programFolder),
      window_(form_, *p.desktop, *p.files, *p.clock, p.programFolder),
      scheduler_(form_, sendRun_, commands_, window_, settings_),
      startUp_(form_, settings_, commands_, window_, *p.desktop, *p.instance, p.programFolder) {
  wire();
  platform_.desktop->bind(form_);
}

void Program::wire() {
  form_.onResize = [this] { window_.Form_Resize(); };
  form_.onClose = [this] { window_.unloadMainForm(); };
  form_.onKey = [this](int shift) { window_.Form_KeyDown(shift); };
  for (Control* command : form_.Command1.all()) {
    const int index = command->row().index;
    command->onClick = [this, index] { commands_.Command1_Click(index); };
  }
  form_.MyMenu_Send.onClick = [this] { commands_.MyMenu_Send_Click(); };
  form_.MyMenu_Init.onClick = [this] { window_.MyMenu_Init_Click(); };
  form_.MyMenu_Exit.onClick = [this] { window_.unloadMainForm(); };
  form_.onTimer1 = [this] { scheduler_.Timer1_Timer(); };

  sendRun_.Task_SetIcon = [this](bool failed) { window_.Task_SetIcon(failed); };
  commands_.unloadMainForm = [this] { window_.unloadMainForm(); };
  platform_.desktop->setEndSessionHandler([this] { window_.unloadMainForm(); });
}

Program::~Program() {
  platform_.desktop->release(form_);
}

int Program::run() {
  if (start() != StartOutcome::kEnded) platform_.desktop->run();
  return 0;
}

}  // namespace karvel
