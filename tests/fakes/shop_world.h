#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/program.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_files.h"
#include "fakes/fake_instance.h"
#include "fakes/fake_internet.h"
#include "fakes/fake_profile.h"

namespace karvel {

/// The whole program on a fake platform: a shop with one desk whose settings are complete for the
/// folder destination, until a test changes them.
class ShopWorld {
  Platform platform_;

 public:
  static constexpr const char* kFolder = "shop";
  static constexpr const char* kOutFolder = "out";

  ShopWorld();

  FakeClock& clock;
  FakeFiles& files;
  FakeInternet& internet;
  FakeInstance& instance;
  FakeDesktop& desktop;

  /// Starts the program.
  StartOutcome start(const std::string& commandLine = "");
  Platform& platform() { return platform_; }  ///< before the start
  FtpForm& form() { return program_->mainForm(); }
  /// So many intervals of the timer pass, as long as it is enabled.
  void tick(int count = 1);

  // Settings in the files, as another program sees and changes them.
  std::string own(const std::string& key) { return value(kOwn, kOwnSection, key); }
  void setOwn(const std::string& key, const std::string& to) {
    setValue(kOwn, kOwnSection, key, to);
  }
  std::string ticket(const std::string& section, const std::string& key) {
    return value(kTicket, section, key);
  }
  void setTicket(const std::string& section, const std::string& key, const std::string& to) {
    setValue(kTicket, section, key, to);
  }

  /// Turns the shop's settings to the user's own FTP site.
  void useOwnSite();

  static std::string path(const std::string& name);     ///< in the program's folder
  static std::string outPath(const std::string& name);  ///< in the output folder
  std::string content(const std::string& path);         ///< as UTF-8; "" when missing
  /// Messages of the run log of the clock's day, without their time stamps.
  std::vector<std::string> logMessages();
  void clearLog() { files.files.erase(logPath()); }
  [[nodiscard]] std::string logPath() const;

 private:
  static constexpr const char* kOwn = "karvel.hnb";
  static constexpr const char* kOwnSection = "FTP INFOMATION";
  static constexpr const char* kTicket = "karvel.ini";

  std::string value(const char* file, const std::string& section, const std::string& key);
  void setValue(const char* file, const std::string& section, const std::string& key,
                const std::string& value);

  std::unique_ptr<Program> program_;
};

}  // namespace karvel
