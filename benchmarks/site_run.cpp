#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "app/program.h"
#include "contract/ports.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_instance.h"
#include "platform/linux/system/system_clock.h"

// One piece of the program's work with an FTP server, without a desktop: what it takes, in
// milliseconds.

namespace {

using karvel::FtpForm;
using Clock = std::chrono::steady_clock;

constexpr int kRefreshes = 5;

double millisecondsSince(Clock::time_point begin) {
  return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

/// One send run; in bulk, every day that has files.
bool send(karvel::Program& program, bool bulk) {
  FtpForm& form = program.mainForm();
  form.ShiftState = bulk ? FtpForm::kShiftAlone : 0;
  const auto begin = Clock::now();
  form.MyMenu_Send.onClick();
  std::printf("%.1f\n", millisecondsSince(begin));
  return !form.SndNG;
}

/// A refresh of the listing of the login folder, on average.
bool refresh(karvel::Program& program, karvel::Internet& internet) {
  using Field = FtpForm::Field;
  FtpForm& form = program.mainForm();
  karvel::McWinFTP ftp(internet, [](std::int32_t, const std::string&) {});
  ftp.RemoteHost(form.text(Field::kServer));
  ftp.User(form.text(Field::kAccount));
  ftp.Password(form.text(Field::kPassword));
  ftp.Inet_FtpPort(std::stoi(form.text(Field::kPort)));
  ftp.PassiveFlag(true);
  ftp.OpenSession();
  if (ftp.hFTP() == 0) return false;
  karvel::RemoteListing listing(form, ftp);
  const auto begin = Clock::now();
  for (int i = 0; i < kRefreshes; ++i) listing.Ftp_ListFiles();
  std::printf("%.2f %zu\n", millisecondsSince(begin) / kRefreshes,
              form.lstFiles.items().size() - 1);
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view work = argc == 3 ? argv[2] : "";
  if (work != "send" && work != "bulk" && work != "refresh") {
    std::fputs("usage: site_run SHOP-FOLDER send|bulk|refresh\n", stderr);
    return 2;
  }
  karvel::Platform platform;
  platform.programFolder = argv[1];
  platform.clock = std::make_unique<karvel::SystemClock>();
  platform.files = karvel::makeFiles();
  platform.profile = karvel::makeProfile();
  platform.internet = karvel::makeInternet();
  platform.instance = std::make_unique<karvel::FakeInstance>();
  platform.desktop = std::make_unique<karvel::FakeDesktop>();
  karvel::Program program(platform);
  if (program.start() != karvel::StartOutcome::kResident) return 1;
  const bool done =
      work == "refresh" ? refresh(program, *platform.internet) : send(program, work == "bulk");
  return done ? 0 : 1;
}
