#include "ui/user_form.h"

#include "text/strings.h"

namespace karvel {

UserForm::UserForm(const ControlArray& panelText, Control& panelPassive)
    : Form(kUserFormTable),
      Text1(*this, "Text1"),
      Command1(*this, "Command1"),
      Command2(control("Command2")),
      chkPassive(control("chkPassive")),
      panelText_(panelText),
      panelPassive_(panelPassive) {
  for (Control* field : Text1.all()) {
    field->setText(panelText[field->row().index].text());
    field->onFocus = [field] { field->setSelection(0, characterCount(field->text())); };
  }
  chkPassive.setValue(panelPassive.value());
  for (Control* command : Command1.all()) {
    const int index = command->row().index;
    command->onClick = [this, index] { Command1_Click(index); };
  }
  Command2.onClick = [this] { Command2_Click(); };
}

void UserForm::Command1_Click(int index) {
  if (index == Command::kRegister) {
    for (const Control* field : Text1.all()) {
      panelText_[field->row().index].setText(field->text());
    }
    panelPassive_.setValue(chkPassive.value());
  }
  markClosed();
}

void UserForm::Command2_Click() {
  Text1[PanelField::kPort].setText("21");
}

}  // namespace karvel
