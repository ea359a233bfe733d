#pragma once

#include <string>

#include "form/form.h"
#include "store/settings_store.h"
#include "ui/ftp_form.h"

namespace karvel {

extern const FormTable kGrpFormTable;

/// The dialog that registers shop code, group code, group name and web group. Registering stores
/// them and hands them back to the main panel; anything else stores nothing. The
/// constructor is its load handler; it also sets the paths of both settings files.
class GrpForm final : public Form {
 public:
  struct Field {
    enum Index : int {
      kWebGroup = 0,
      kShopCode = 5,
      kShopName = 6,
      kGroupCode = 8,
      kGroupName = 9
    };
  };
  struct Command {
    enum Index : int { kCancel, kRegister };
  };

  GrpForm(FtpForm& panel, IniRedWrt& settings, const std::string& programFolder);

  const ControlArray Text1;
  const ControlArray Command1;

  void Command1_Click(int index);

 private:
  void Form_Load(const std::string& programFolder);
  void loadWebGroup();
  void storeAndHandBack();

  FtpForm& panel_;
  IniRedWrt& settings_;
};

}  // namespace karvel
