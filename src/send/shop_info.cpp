#include "send/shop_info.h"

#include "text/code_page.h"
#include "text/numeric_value.h"
#include "text/path.h"
#include "text/strings.h"

namespace karvel {
namespace {

constexpr std::size_t kIdentifierLength = 7;
constexpr const char* kExtension = ".inf";

bool isValidIdentifier(const std::string& identifier) {
  return characterCount(identifier) == kIdentifierLength && numericValue(identifier) > 0;
}

}  // namespace

ShopInfo::ShopInfo(FtpForm& form, IniRedWrt& settings, RunLog& log, Files& files,
                   FolderCopy& folder, FtpSite& site, const std::string& programFolder)
    : form_(form),
      settings_(settings),
      log_(log),
      files_(files),
      folder_(folder),
      site_(site),
      programFolder_(programFolder + kSeparator) {
}

void ShopInfo::Ftp_ShopFold() {
  log_.WriteLog("HS-FTP:---------------------------------- Ftp_ShopFold Start");
  const std::string identifier = settings_.readOwn("GRUP CODE") + settings_.readOwn("FTP CODE");
  if (isValidIdentifier(identifier)) {
    removePrevious(identifier);
    deliver(identifier + kExtension);
  }
  log_.WriteLog("HS-FTP:---------------------------------- Ftp_ShopFold Exit");
}

void ShopInfo::removePrevious(const std::string& identifier) {
  const std::string previous = settings_.readOwn("GRUP BACK");
  if (previous == identifier) return;
  if (!previous.empty()) {
    const std::string name = previous + kExtension;
    if (form_.destinationIs(FtpForm::Destination::kOutputFolder)) {
      folder_.Copy_OutFold(programFolder_, name, true);
    } else {
      site_.Ftp_DeleteListed(name);
    }
  }
  settings_.writeOwn("GRUP BACK", identifier);
}

void ShopInfo::deliver(const std::string& name) {
  const std::string path = programFolder_ + name;
  if (files_.write(path, toCodePage932(line()))) {
    if (form_.destinationIs(FtpForm::Destination::kOutputFolder)) {
      folder_.Copy_OutFold(programFolder_, name, false);
    } else {
      site_.Ftp_PutFile(programFolder_, name);
    }
  }
  files_.remove(path);
}

std::string ShopInfo::line() {
  const std::string values[] = {
      settings_.readOwn("GRUP CODE"),
      settings_.readOwn("FTP CODE"),
      settings_.readOwn("GRUP NAME"),
      settings_.readTicket(section::kShop, "USER NAME"),
      settings_.readTicket(section::kFtp, "FTP GRUP"),
      settings_.readTicket(section::kFtp, "FTP USER"),
  };
  std::string line;
  for (const std::string& value : values) line.append(value).append("\t");
  return line.append("\t\t\r\n");
}

}  // namespace karvel
