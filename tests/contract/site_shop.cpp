#include "contract/site_shop.h"

#include <filesystem>
#include <stdexcept>

#include "fakes/fake_instance.h"
#include "shop_folder.h"
#include "text/code_page.h"
#include "text/path.h"

namespace karvel {

SiteShop::SiteShop()
    : platform_{.programFolder = folder_.path(),
                .commandLine = "",
                .clock = std::make_unique<FakeClock>(),
                .files = makeFiles(),
                .profile = makeProfile(),
                .internet = makeInternet(longestLimit),
                .instance = std::make_unique<FakeInstance>(),
                .desktop = std::make_unique<FakeDesktop>()},
      clock(static_cast<FakeClock&>(*platform_.clock)),
      desktop(static_cast<FakeDesktop&>(*platform_.desktop)) {
  server.add(kSiteFolder);
  sample::layOut({.folder = std::filesystem::u8path(folder_.path()),
                  .outFolder = {},
                  .destination = sample::Destination::kOwnSite,
                  .site = {.port = std::to_string(server.port()),
                           .folder = kSiteFolder + 1,
                           .user = ScriptedFtpServer::kUser,
                           .password = ScriptedFtpServer::kPassword},
                  .day = "240115",
                  .desks = 1,
                  .receptions = 3});
}

void SiteShop::setOwn(const std::string& key, const std::string& value) {
  static_cast<void>(platform_.profile->write("FTP INFOMATION", key, toCodePage932(value),
                                             folder_.path("karvel.hnb")));
}

std::string SiteShop::own(const std::string& key) const {
  constexpr std::size_t kLongestValue = 256;
  return fromCodePage932(
      platform_.profile->read("FTP INFOMATION", key, folder_.path("karvel.hnb"), kLongestValue));
}

void SiteShop::start() {
  program_ = std::make_unique<Program>(platform_);
  if (program_->start() != StartOutcome::kResident) throw std::logic_error("not resident");
  setOwn("FTP CHKF", "0");
  form().TimerCount = 0;
}

std::string SiteShop::takeLog() {
  const std::string path = folder_.path(joinPath("Log", "240115.log"));
  const std::string log = fromCodePage932(ScratchFolder::content(path).value_or(""));
  EXPECT_TRUE(platform_.files->remove(path));
  return log;
}

}  // namespace karvel
