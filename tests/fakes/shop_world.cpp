#include "fakes/shop_world.h"

#include "fakes/fake_profile.h"
#include "text/code_page.h"
#include "text/path.h"

namespace karvel {
namespace {

template <typename Port, typename Fake>
Fake& put(std::unique_ptr<Port>& place, std::unique_ptr<Fake> fake) {
  Fake& reference = *fake;
  place = std::move(fake);
  return reference;
}

}  // namespace

ShopWorld::ShopWorld()
    : clock(put(platform_.clock, std::make_unique<FakeClock>())),
      files(put(platform_.files, std::make_unique<FakeFiles>())),
      internet(put(platform_.internet, std::make_unique<FakeInternet>(files))),
      instance(put(platform_.instance, std::make_unique<FakeInstance>())),
      desktop(put(platform_.desktop, std::make_unique<FakeDesktop>())) {
  platform_.profile = std::make_unique<FakeProfile>(files);
  platform_.programFolder = kFolder;
  files.folders = {kFolder, path("temp"), path("Log"), kOutFolder};

  setTicket("USER INFOMATION", "TODAY", "240115");
  setTicket("KARVEL1 INFOMATION", "USER NAME", "ソレイユ薬局");
  setTicket("TASHIN INFOMATION", "SHINSATSU", "0");
  setTicket("TASHIN INFOMATION", "TASHIN1", "受付");
  setOwn("HST FOLD", kFolder);
  setOwn("FTP CODE", "00345");
  setOwn("GRUP CODE", "12");
  setOwn("GRUP NAME", "表町");
  setOwn("FTP TYPE", "0");
  setOwn("OUT FOLD", kOutFolder);
  setOwn("FTP CHKC", "1");
  setOwn("FTP CHKF", "0");
  setOwn("FTP TIME", "1");
  setOwn("FTP PORT", "21");
  setOwn("FTP PSIV", "1");
}

StartOutcome ShopWorld::start(const std::string& commandLine) {
  platform_.commandLine = commandLine;
  program_ = std::make_unique<Program>(platform_);
  return program_->start();
}

void ShopWorld::tick(int count) {
  for (int i = 0; i < count; ++i) desktop.timer->pass();
}

std::string ShopWorld::value(const char* file, const std::string& section, const std::string& key) {
  return fromCodePage932(FakeProfile::valueIn(files.files[path(file)].content, section, key));
}

void ShopWorld::setValue(const char* file, const std::string& section, const std::string& key,
                         const std::string& value) {
  std::string& text = files.files[path(file)].content;
  text = FakeProfile::withValue(text, section, key, toCodePage932(value));
}

void ShopWorld::useOwnSite() {
  setOwn("FTP TYPE", "1");
  setOwn("FTP SEVE", "ftp.example.com");
  setOwn("FTP NAME", "shop");
  setOwn("FTP PASS", "secret");
  setOwn("FTP CHKF", "1");
}

std::string ShopWorld::path(const std::string& name) {
  return joinPath(kFolder, name);
}

std::string ShopWorld::outPath(const std::string& name) {
  return joinPath(kOutFolder, name);
}

std::string ShopWorld::content(const std::string& path) {
  const auto found = files.files.find(path);
  return found == files.files.end() ? "" : fromCodePage932(found->second.content);
}

std::string ShopWorld::logPath() const {
  const DateTime& day = clock.time;
  return joinPath(path("Log"), formatDayKey(day.year, day.month, day.day) + ".log");
}

std::vector<std::string> ShopWorld::logMessages() {
  const std::string log = content(logPath());
  std::vector<std::string> messages;
  std::size_t begin = 0;
  for (auto end = log.find("\r\n"); end != std::string::npos; end = log.find("\r\n", begin)) {
    const std::string line = log.substr(begin, end - begin);
    messages.push_back(line.substr(line.find('\t') + 1));
    begin = end + 2;
  }
  return messages;
}

}  // namespace karvel
