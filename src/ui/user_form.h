#pragma once

#include "form/form.h"
#include "store/setting_keys.h"

namespace karvel {

extern const FormTable kUserFormTable;

/// The dialog that edits the account of the user's own site. It works on a copy of the panel's
/// fields, taken when it is made, and hands them back when the user registers. Its fields have the
/// indexes of the panel's.
class UserForm final : public Form {
 public:
  struct Command {
    enum Index : int { kCancel, kRegister };
  };

  UserForm(const ControlArray& panelText, Control& panelPassive);

  const ControlArray Text1;
  const ControlArray Command1;
  Control& Command2;  ///< puts in the standard port
  Control& chkPassive;

  void Command1_Click(int index);
  void Command2_Click();

 private:
  const ControlArray& panelText_;
  Control& panelPassive_;
};

}  // namespace karvel
