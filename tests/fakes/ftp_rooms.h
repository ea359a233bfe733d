#pragma once

#include <string>

#include "fakes/fake_clock.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_files.h"
#include "fakes/fake_internet.h"
#include "fakes/fake_profile.h"
#include "ftp/safe_upload.h"
#include "ftp/server_connection.h"
#include "text/code_page.h"
#include "text/path.h"

namespace karvel {

/// The FTP rooms without the rest of the program: the session object is not connected, and the
/// panel shows a complete account of the user's own site.
struct FtpRooms {
  static constexpr const char* kFolder = "shop";

  FakeFiles files;
  FakeClock clock;
  FakeDesktop desktop;
  FakeProfile profile{files};
  FakeInternet internet{files};
  IniRedWrt settings{profile, files, clock};
  FtpForm form{settings, desktop};
  RunLog log{files, clock, kFolder};
  McWinFTP clsFtp{internet, [this](std::int32_t number, const std::string& text) {
                    form.clsFtp_FTPFrr(number, text);
                  }};
  RemoteListing listing{form, clsFtp};
  ServerList servers{files, settings, kFolder};
  ServerConnection connection{form, clsFtp, listing, servers, settings};
  SafeUpload upload{form, clsFtp, listing, files, log};

  FtpRooms() {
    files.folders = {kFolder, joinPath(kFolder, "Log")};
    settings.OwnIniPath = joinPath(kFolder, "karvel.hnb");
    settings.TicketIniPath = joinPath(kFolder, "karvel.ini");
    form.Option2[FtpForm::Destination::kUserSite].select();
    type(FtpForm::Field::kServer, "ftp.example.com");
    type(FtpForm::Field::kAccount, "shop");
    type(FtpForm::Field::kPassword, "secret");
    type(FtpForm::Field::kPort, "2121");
    internet.calls.clear();
  }

  void type(FtpForm::Field::Index field, const std::string& text) {
    form.Text1[field].setText(text);
  }
  void setTicket(std::string_view section, std::string_view key, std::string_view value) {
    settings.WriteIni(section, key, value, settings.TicketIniPath);
  }
  /// Calls that begin with `word` fail so.
  void refuse(const std::string& word, FakeInternet::Failure failure) {
    internet.fault = [word, failure](const std::string& call) {
      return call.starts_with(word) ? std::optional(failure) : std::nullopt;
    };
  }
  [[nodiscard]] const std::string& status() const { return form.MsgLabel.caption(); }
};

}  // namespace karvel
