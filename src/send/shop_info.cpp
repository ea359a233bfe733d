#include "send/shop_info.h"

#include "text/code_page.h"
#include "text/numeric_value.h"
#include "text/path.h"
#include "text/strings.h"

namespace karvel {
namespace {

constexpr std::size_t kIdentifierLength = 7;
constexpr const char* kExtension = ".inf";

}  // namespace

ShopInfo::ShopInfo(IniRedWrt& settings, RunLog& log, Files& files, const std::string& programFolder)
    : settings_(settings), log_(log), files_(files), programFolder_(programFolder + kSeparator) {
}

bool ShopInfo::isValidIdentifier(const std::string& identifier) {
  return characterCount(identifier) == kIdentifierLength && numericValue(identifier) > 0 &&
         isPlainName(identifier);
}

void ShopInfo::Ftp_ShopFold(Delivery& destination) {
  log_.WriteLog("HS-FTP:---------------------------------- Ftp_ShopFold Start");
  const std::string identifier = settings_.read(own::kGroupCode) + settings_.read(own::kShopCode);
  if (isValidIdentifier(identifier)) {
    removePrevious(identifier, destination);
    deliver(identifier + kExtension, destination);
  }
  log_.WriteLog("HS-FTP:---------------------------------- Ftp_ShopFold Exit");
}

void ShopInfo::removePrevious(const std::string& identifier, Delivery& destination) {
  const std::string previous = settings_.read(own::kPreviousShop);
  if (previous == identifier) return;
  if (!previous.empty() && isPlainName(previous)) destination.removeFile(previous + kExtension);
  settings_.write(own::kPreviousShop, identifier);
}

void ShopInfo::deliver(const std::string& name, Delivery& destination) {
  const std::string path = programFolder_ + name;
  if (files_.write(path, toCodePage932(line()))) destination.putFile(programFolder_, name);
  files_.remove(path);
}

std::string ShopInfo::line() {
  const std::string values[] = {
      settings_.read(own::kGroupCode),   settings_.read(own::kShopCode),
      settings_.read(own::kGroupName),   settings_.read(ticket::kShopName),
      settings_.read(ticket::kWebGroup), settings_.read(ticket::kAccount),
  };
  std::string line;
  for (const std::string& value : values) line.append(value).append("\t");
  return line.append("\t\t\r\n");
}

}  // namespace karvel
