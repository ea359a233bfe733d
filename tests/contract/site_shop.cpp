#include "contract/site_shop.h"

#include <stdexcept>

#include "contract/make_internet.h"
#include "contract/ports.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_instance.h"
#include "text/code_page.h"
#include "text/path.h"

namespace karvel {
namespace {

constexpr std::size_t kLongestValue = 256;
constexpr const char* kReceptions =
    "1\t09:00:00\t09:04:00\t\t済\t\t\t\t\t\t\r\n"
    "2\t09:10:00\t09:30:00\t\t済\t\t\t\t\t\t\r\n"
    "3\t09:40:00\t\t\t\t\t\t\t\t\t\r\n";

template <typename Port, typename Made>
Made& put(std::unique_ptr<Port>& place, std::unique_ptr<Made> made) {
  Made& reference = *made;
  place = std::move(made);
  return reference;
}

}  // namespace

SiteShop::SiteShop(ScriptedFtpServer& server)
    : internet(put(platform_.internet, std::make_unique<ImpatientInternet>(makeInternet()))),
      desktop(put(platform_.desktop, std::make_unique<FakeDesktop>())),
      server_(server) {
  platform_.programFolder = folder_.path();
  platform_.clock = std::make_unique<FakeClock>();
  platform_.files = makeFiles();
  platform_.profile = makeProfile();
  platform_.instance = std::make_unique<FakeInstance>();
  folder_.addFolder("Log");
  const std::string receptions = joinPath(folder_.addFolder("temp"), "240115_1.tmp");
  static_cast<void>(platform_.files->write(receptions, toCodePage932(kReceptions)));

  setTicket("USER INFOMATION", "TODAY", "240115");
  setTicket("KARVEL1 INFOMATION", "USER NAME", "ソレイユ薬局");
  setTicket("TASHIN INFOMATION", "SHINSATSU", "0");
  setTicket("TASHIN INFOMATION", "TASHIN1", "受付");
  setOwn("HST FOLD", folder_.path());
  setOwn("FTP CODE", "00345");
  setOwn("GRUP CODE", "12");
  setOwn("GRUP NAME", "表町");
  setOwn("FTP TIME", "1");
  setOwn("FTP TYPE", "1");
  setOwn("FTP SEVE", "127.0.0.1");
  setOwn("FTP FOLD", kSiteFolder);
  setOwn("FTP NAME", server.options().user);
  setOwn("FTP PASS", server.options().password);
  setOwn("FTP PORT", std::to_string(server.port()));
  setOwn("FTP PSIV", "1");
}

void SiteShop::setOwn(const std::string& key, const std::string& value) {
  static_cast<void>(platform_.profile->write("FTP INFOMATION", key, toCodePage932(value),
                                             folder_.path("karvel.hnb")));
}

void SiteShop::setTicket(const std::string& section, const std::string& key,
                         const std::string& value) {
  static_cast<void>(
      platform_.profile->write(section, key, toCodePage932(value), folder_.path("karvel.ini")));
}

std::string SiteShop::own(const std::string& key) const {
  return fromCodePage932(
      platform_.profile->read("FTP INFOMATION", key, folder_.path("karvel.hnb"), kLongestValue));
}

void SiteShop::useServiceSite() {
  setOwn("FTP TYPE", "2");
  folder_.add("kvserver.ini", "0004 127.0.0.1\r\n0005 shop.service.example\r\n");
  setTicket("FTP INFOMATION", "FTP USER", "noto345");
  setTicket("FTP INFOMATION", "FTP CODE", "00112233");
  setTicket("FTP INFOMATION", "DOMAIN", "shop.service.example");
  setTicket("FTP INFOMATION", "FTP MODE", "PASV");
  setTicket("FTP INFOMATION", "FTP PORT", std::to_string(server_.port()));
}

void SiteShop::start() {
  setOwn("FTP CHKF", "1");  // or it would not stay
  program_ = std::make_unique<Program>(platform_);
  if (program_->start() != StartOutcome::kResident) throw std::logic_error("not resident");
  setOwn("FTP CHKF", "0");
  form().TimerCount = 0;
}

void SiteShop::send() {
  form().MyMenu_Send.onClick();
}

FtpForm& SiteShop::form() {
  return program_->mainForm();
}

std::vector<std::string> SiteShop::takeLog() {
  const auto bytes = ScratchFolder::content(folder_.path(joinPath("Log", "240115.log")));
  const std::string log = fromCodePage932(bytes.value_or(""));
  std::vector<std::string> messages;
  for (auto end = log.find("\r\n", logTaken_); end != std::string::npos;
       end = log.find("\r\n", logTaken_)) {
    const std::string line = log.substr(logTaken_, end - logTaken_);
    messages.push_back(line.substr(line.find('\t') + 1));
    logTaken_ = end + 2;
  }
  return messages;
}

bool SiteShop::isTidy() const {
  return !folder_.has(kTable) && !folder_.has(kShopInfo);
}

}  // namespace karvel
