#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "form/form.h"
#include "platform/desktop.h"
#include "store/settings_store.h"

namespace karvel {

extern const FormTable kFtpFormTable;

/// The main form: the settings panel, whose controls are the working copy of the settings, and the
/// values that belong to the form. The procedures of the program read and write it; only the rules
/// of the panel itself are here.
class FtpForm final : public Form {
 public:
  // Indexes of the control arrays.
  using Field = PanelField;
  struct Destination {
    enum Index : int { kOutputFolder, kUserSite, kServiceSite, kNone };
  };
  struct Interval {
    enum Index : int { kManual, k5Minutes, k15Minutes, k30Minutes, k60Minutes };
    static constexpr int kCount = 5;
  };
  struct Command {
    enum Index : int { kCancel, kOk, kSend, kTest, kGroup };
  };
  /// The value of ShiftState while Shift alone is held.
  static constexpr std::int16_t kShiftAlone = 1;
  static constexpr std::chrono::milliseconds kTimerInterval{2000};

  FtpForm(IniRedWrt& settings, Desktop& desktop);

  const ControlArray Text1;
  const ControlArray Option1;  ///< send interval
  const ControlArray Option2;  ///< destination
  const ControlArray Command1;
  Control& Command3;  ///< browses for the output folder
  Control& Command4;  ///< opens the account dialog
  Control& chkPassive;
  Control& OutputFolderLabel;  ///< Label1(10)
  Control& MsgLabel;           ///< the status line
  Control& lstFiles;           ///< the remote listing

  // The popup menu of the notification-area icon.
  MenuItem MyMenu_Send{"手動転送"};
  MenuItem MyMenu_Init{"接続設定"};
  MenuItem MyMenu_Dummy1{"-"};
  MenuItem MyMenu_Exit{"常駐停止"};
  const std::vector<MenuItem*> MyMenu_Task{&MyMenu_Send, &MyMenu_Init, &MyMenu_Dummy1,
                                           &MyMenu_Exit};

  const std::unique_ptr<Timer> Timer1;
  std::function<void()> onTimer1;  ///< a tick of Timer1

  std::int16_t TimerCount = 0;  ///< ticks counted towards the next unattended send
  bool SndNG = false;           ///< a run failed and no failure message has been shown since
  std::int16_t ShiftState = 0;  ///< 1 Shift + 2 Ctrl + 4 Alt at the last key event
  /// "" or characters of this number: number, "/" and text of the last failure.
  static constexpr std::size_t kErrorTextWidth = 128;
  std::string LastFtpError;

  /// Lowers TimerCount, at most to the lowest value of its type.
  void lowerTimerCount(int ticks);

  /// Keeps a failure of the FTP session in LastFtpError.
  void clsFtp_FTPFrr(std::int32_t ErrNumber, const std::string& ErrString);

  void Option2_Click(int index);
  /// Decides from controls and settings which send commands are available.
  void Text1_Change(int index);
  void Text1_GotFocus(int index);
  void Command3_Click();
  void Command4_Click();

  [[nodiscard]] const std::string& text(Field::Index field) const { return Text1[field].text(); }
  [[nodiscard]] Destination::Index destination() const;
  /// The selected option of Option1.
  [[nodiscard]] int interval() const;
  /// The shop code field holds a positive number.
  [[nodiscard]] bool shopCodeValid() const;
  /// The fields that the chosen destination needs are filled in: output folder, or host, account
  /// and password.
  [[nodiscard]] bool destinationComplete() const;
  /// The chosen destination has been reached before, or needs no proof (the service site).
  [[nodiscard]] bool destinationConfirmed();
  /// Both of the above: the program may stay resident.
  [[nodiscard]] bool residentAllowed() { return shopCodeValid() && destinationConfirmed(); }

  /// Puts group and shop into the window caption.
  void showShopCaption();
  /// Disables the tray menu's send entry and the command buttons while a run lasts.
  void disableCommands();
  /// Enables them again: those of the send as the panel's state allows.
  void enableCommands();

 private:
  [[nodiscard]] bool connectionTestAllowed();
  [[nodiscard]] bool serviceSiteAvailable();

  IniRedWrt& settings_;
  Desktop& desktop_;
};

}  // namespace karvel
