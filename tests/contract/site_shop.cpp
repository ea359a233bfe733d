#include "contract/site_shop.h"

#include <filesystem>
#include <stdexcept>

#include "contract/ports.h"
#include "fakes/fake_instance.h"
#include "shop_folder.h"
#include "text/code_page.h"
#include "text/path.h"

namespace karvel {
namespace {

constexpr std::size_t kLongestValue = 256;
template <typename Port, typename Made>
Made& put(std::unique_ptr<Port>& place, std::unique_ptr<Made> made) {
  Made& reference = *made;
  place = std::move(made);
  return reference;
}

}  // namespace

SiteShop::SiteShop(ScriptedFtpServer& server)
    : clock(put(platform_.clock, std::make_unique<FakeClock>())),
      desktop(put(platform_.desktop, std::make_unique<FakeDesktop>())) {
  platform_.programFolder = folder_.path();
  platform_.internet = makeInternet(longestLimit);
  platform_.files = makeFiles();
  platform_.profile = makeProfile();
  platform_.instance = std::make_unique<FakeInstance>();
  sample::Shop shop;
  shop.folder = std::filesystem::u8path(folder_.path());
  shop.destination = sample::Destination::kOwnSite;
  shop.site = {.port = std::to_string(server.port()),
               .folder = kSiteFolder,
               .user = server.options().user,
               .password = server.options().password};
  shop.day = "240115";
  shop.desks = 1;
  shop.receptions = 3;
  sample::layOut(shop);
}

void SiteShop::setOwn(const std::string& key, const std::string& value) {
  static_cast<void>(platform_.profile->write("FTP INFOMATION", key, toCodePage932(value),
                                             folder_.path("karvel.hnb")));
}

std::string SiteShop::own(const std::string& key) const {
  return fromCodePage932(
      platform_.profile->read("FTP INFOMATION", key, folder_.path("karvel.hnb"), kLongestValue));
}

void SiteShop::start() {
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

std::string SiteShop::takeLog() {
  const std::string path = folder_.path(joinPath("Log", "240115.log"));
  const std::string log = fromCodePage932(ScratchFolder::content(path).value_or(""));
  EXPECT_TRUE(platform_.files->remove(path));
  return log;
}

bool SiteShop::isTidy() const {
  return !folder_.has(kTable) && !folder_.has(kShopInfo);
}

}  // namespace karvel
