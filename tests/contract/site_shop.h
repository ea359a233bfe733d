#pragma once

#include <memory>
#include <string>

#include "app/program.h"
#include "contract/ports.h"
#include "contract/scratch_folder.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_desktop.h"
#include "fakes/scripted_ftp_server.h"

namespace karvel {

/// The whole program with the platform's own files, settings and internet library, in a folder of
/// its own: a shop with one desk that sends to a scripted server of its own. Its clock stands
/// still, so that every run sends the same bytes; its panel is never drawn.
class SiteShop {
  ScratchFolder folder_;
  Platform platform_;

 public:
  // The two files of a run.
  static constexpr const char* kTable = "00345_240115.txt";
  static constexpr const char* kShopInfo = "1200345.inf";
  /// The folder on the server that the shop sends to.
  static constexpr const char* kSiteFolder = "/in";

  SiteShop();

  ScriptedFtpServer server;
  FakeClock& clock;
  FakeDesktop& desktop;
  /// Of the internet library's time limits, in milliseconds, in the runs from now on.
  std::uint32_t longestLimit = kNoLimit;

  // Settings; the panel takes its own from them at start().
  void setOwn(const std::string& key, const std::string& value);
  [[nodiscard]] std::string own(const std::string& key) const;

  /// Starts the program, resident, with its tick counter at 0 and no site reached yet.
  void start();
  /// One unattended run, as the tray menu starts it.
  void send() { form().MyMenu_Send.onClick(); }
  [[nodiscard]] FtpForm& form() { return program_->mainForm(); }

  /// What is in the site's folder.
  [[nodiscard]] ScriptedFtpServer::Files delivered() const { return server.files(kSiteFolder); }
  /// The run log, which begins anew.
  std::string takeLog();
  /// Nothing that a run makes is left in the program's folder.
  [[nodiscard]] bool isTidy() const { return !folder_.has(kTable) && !folder_.has(kShopInfo); }

 private:
  std::unique_ptr<Program> program_;
};

}  // namespace karvel
