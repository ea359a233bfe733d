#pragma once

#include <map>
#include <memory>
#include <string>

#include "app/program.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_files.h"
#include "fakes/fake_instance.h"
#include "fakes/fake_internet.h"
#include "fakes/fake_profile.h"
#include "text/code_page.h"

namespace karvel {

/// The whole program on a fake platform: a shop with one desk whose settings are complete for the
/// folder destination, until a test changes them.
class ShopWorld {
  Platform platform_;

  template <typename Fake, typename Port, typename... Parts>
  static Fake& put(std::unique_ptr<Port>& place, Parts&... parts) {
    auto fake = std::make_unique<Fake>(parts...);
    Fake& made = *fake;
    place = std::move(fake);
    return made;
  }

 public:
  static constexpr const char* kFolder = "shop";
  static constexpr const char* kOutFolder = "out";
  static inline const std::map<std::string, std::string> kSettings{
      {"FTP CODE", "00345"},    {"GRUP CODE", "12"}, {"GRUP NAME", "表町"}, {"FTP TYPE", "0"},
      {"OUT FOLD", kOutFolder}, {"FTP CHKC", "1"},   {"FTP CHKF", "0"},     {"FTP TIME", "1"},
      {"FTP PORT", "21"},       {"FTP PSIV", "1"},   {"HST FOLD", kFolder}};

  FakeClock& clock = put<FakeClock>(platform_.clock);
  FakeFiles& files = put<FakeFiles>(platform_.files);
  FakeInternet& internet = put<FakeInternet>(platform_.internet, files);
  FakeInstance& instance = put<FakeInstance>(platform_.instance);
  FakeDesktop& desktop = put<FakeDesktop>(platform_.desktop);

  ShopWorld() {
    put<FakeProfile>(platform_.profile, files);
    platform_.programFolder = kFolder;
    files.folders = {kFolder, path("temp"), path("Log"), kOutFolder};
    setTicket("USER INFOMATION", "TODAY", "240115");
    setTicket("KARVEL1 INFOMATION", "USER NAME", "ソレイユ薬局");
    setTicket("TASHIN INFOMATION", "SHINSATSU", "0");
    setTicket("TASHIN INFOMATION", "TASHIN1", "受付");
    for (const auto& [key, value] : kSettings) setOwn(key, value);
  }
  /// Turns the shop's settings to the user's own FTP site.
  void useOwnSite() {
    setOwn("FTP TYPE", "1");
    setOwn("FTP SEVE", "ftp.example.com");
    setOwn("FTP NAME", "shop");
    setOwn("FTP PASS", "secret");
    setOwn("FTP CHKF", "1");
  }

  /// Starts the program.
  StartOutcome start(const std::string& commandLine = "") {
    platform_.commandLine = commandLine;
    program_ = std::make_unique<Program>(platform_);
    return program_->start();
  }
  Platform& platform() { return platform_; }
  FtpForm& form() { return program_->mainForm(); }
  /// An interval of the timer passes.
  void tick() { desktop.timer->pass(); }

  // Settings in the files, as another program sees and changes them.
  std::string own(const std::string& key) { return value("karvel.hnb", kSection, key); }
  void setOwn(const std::string& key, const std::string& value) {
    setValue("karvel.hnb", kSection, key, value);
  }
  std::string ticket(const std::string& section, const std::string& key) {
    return value("karvel.ini", section, key);
  }
  void setTicket(const std::string& section, const std::string& key, const std::string& value) {
    setValue("karvel.ini", section, key, value);
  }

  /// The path of a file in the program's folder, or in the output folder.
  static std::string path(const std::string& name) { return joinPath(kFolder, name); }
  static std::string outPath(const std::string& name) { return joinPath(kOutFolder, name); }
  /// Of the clock's day.
  [[nodiscard]] std::string logPath() const {
    const DateTime& day = clock.time;
    return joinPath(path("Log"), formatDayKey(day.year, day.month, day.day) + ".log");
  }
  /// As UTF-8; "" when missing.
  [[nodiscard]] std::string content(const std::string& path) const {
    return fromCodePage932(files.contentOf(path).value_or(""));
  }

 private:
  static constexpr const char* kSection = "FTP INFOMATION";

  std::string value(const char* file, const std::string& section, const std::string& key) {
    return fromCodePage932(iniValue(files.files[path(file)].content, section, key));
  }
  void setValue(const char* file, const std::string& section, const std::string& key,
                const std::string& value) {
    std::string& text = files.files[path(file)].content;
    text = iniWithValue(text, section, key, toCodePage932(value));
  }

  std::unique_ptr<Program> program_;
};

}  // namespace karvel
