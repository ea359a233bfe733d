#pragma once

#include "form/form.h"
#include "ui/ftp_form.h"

namespace karvel {

extern const FormTable kUserFormTable;

/// The dialog that edits the account of the user's own site. It works on a copy of the panel's
/// fields, taken when it is made, and hands them back when the user registers. Fields have the
/// indexes of the panel.
class UserForm final : public Form {
 public:
  struct Command {
    enum Index : int { kCancel, kRegister };
  };

  explicit UserForm(FtpForm& panel);

  const ControlArray Text1;
  const ControlArray Command1;
  Control& Command2;  ///< puts in the standard port
  Control& chkPassive;

  void Command1_Click(int index);
  void Command2_Click();

 private:
  FtpForm& panel_;
};

}  // namespace karvel
