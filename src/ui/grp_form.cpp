#include "ui/grp_form.h"

#include "text/numeric_value.h"
#include "text/strings.h"

namespace karvel {
namespace {

/// The whole number that a typed code stands for, in decimal, zero-padded to `width` digits.
std::string paddedCode(const std::string& typed, std::size_t width) {
  return zeroPadded(decimalText(numericValue(trimmed(typed))), width);
}

}  // namespace

GrpForm::GrpForm(FtpForm& panel, IniRedWrt& settings, const std::string& programFolder)
    : Form(kGrpFormTable),
      Text1(*this, "Text1"),
      Command1(*this, "Command1"),
      panel_(panel),
      settings_(settings) {
  for (Control* field : Text1.all()) {
    field->onFocus = [field] { field->setSelection(0, characterCount(field->text())); };
  }
  for (Control* command : Command1.all()) {
    const int index = command->row().index;
    command->onClick = [this, index] { Command1_Click(index); };
  }
  Form_Load(programFolder);
}

void GrpForm::Form_Load(const std::string& programFolder) {
  settings_.locateOwnIni(programFolder);
  settings_.locateTicketIni(programFolder);
  loadWebGroup();
  setTopmost(true);
}

void GrpForm::loadWebGroup() {
  Control& webGroup = Text1[Field::kWebGroup];
  webGroup.setText(std::string(trimmed(settings_.read(ticket::kWebGroup))));
  const std::string userCode = settings_.read(ticket::kUserCode);
  if (userCode.empty()) return;
  if (userCode.front() == 'G') {
    webGroup.setEnabled(true);
  } else {
    webGroup.setText("");
  }
}

void GrpForm::Command1_Click(int index) {
  if (index == Command::kRegister) storeAndHandBack();
  markClosed();
}

void GrpForm::storeAndHandBack() {
  Control& shopCode = Text1[Field::kShopCode];
  Control& groupCode = Text1[Field::kGroupCode];
  const Control& groupName = Text1[Field::kGroupName];

  shopCode.setText(paddedCode(shopCode.text(), 5));
  settings_.write(own::kShopCode, shopCode.text());
  groupCode.setText(paddedCode(groupCode.text(), 2));
  settings_.write(own::kGroupCode, groupCode.text());
  settings_.write(own::kGroupName, trimmed(groupName.text()));
  settings_.write(ticket::kWebGroup, trimmed(Text1[Field::kWebGroup].text()));

  panel_.Text1[FtpForm::Field::kShopCode].setText(shopCode.text());
  panel_.Text1[FtpForm::Field::kGroupCode].setText(groupCode.text());
  panel_.Text1[FtpForm::Field::kGroupName].setText(groupName.text());
}

}  // namespace karvel
