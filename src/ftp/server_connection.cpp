#include "ftp/server_connection.h"

#include "text/numeric_value.h"
#include "text/strings.h"
#include "ui/configured_values.h"

namespace karvel {
namespace {

using Field = FtpForm::Field;

constexpr std::size_t kCodeInPassword = 6;
constexpr std::size_t kDroppedOfDomain = 3;
constexpr const char* kStandardPort = "21";

std::string withoutLastCharacters(const std::string& text, std::size_t count) {
  const std::size_t length = characterCount(text);
  return std::string(firstCharacters(text, length > count ? length - count : 0));
}

}  // namespace

ServerConnection::ServerConnection(FtpForm& form, McWinFTP& clsFtp, RemoteListing& listing,
                                   ServerList& servers, IniRedWrt& settings)
    : form_(form), clsFtp_(clsFtp), listing_(listing), servers_(servers), settings_(settings) {
}

bool ServerConnection::Ftp_Open() {
  const bool ownSite = form_.destination() == FtpForm::Destination::kUserSite;
  if (!(ownSite ? takeOwnAccount() : takeServiceAccount())) return false;

  clsFtp_.OpenSession();
  if (clsFtp_.hFTP() == 0) return fail("FTP:OPEN NG " + form_.LastFtpError);

  listing_.Ftp_ListFiles();
  const std::string_view folder = ownSite ? trimmed(form_.text(Field::kSiteFolder)) : "";
  if (!enterFolder(folder)) return fail("指定フォルダがありません");
  form_.MsgLabel.setCaption("FTP:OPEN OK");
  return true;
}

bool ServerConnection::takeOwnAccount() {
  if (!form_.destinationComplete()) return false;

  clsFtp_.RemoteHost(std::string(trimmed(form_.text(Field::kServer))));
  clsFtp_.User(std::string(trimmed(form_.text(Field::kAccount))));
  clsFtp_.Password(std::string(trimmed(form_.text(Field::kPassword))));
  clsFtp_.PassiveFlag(form_.chkPassive.value() != 0);
  clsFtp_.Inet_FtpPort(wholeNumericValue(form_.text(Field::kPort)));
  return true;
}

bool ServerConnection::takeServiceAccount() {
  const std::string user = settings_.read(ticket::kAccount);
  const std::string customerCode = settings_.read(ticket::kCustomerCode);
  if (user.empty() || customerCode.empty()) return false;

  servers_.LoadServerList();
  clsFtp_.RemoteHost(servers_.FtpServerHost);
  logInAs(user, customerCode);

  const std::string mode = asciiLower(settings_.read(ticket::kMode));
  form_.chkPassive.setValue(contains(mode, "pasv") ? 1 : 0);
  clsFtp_.PassiveFlag(form_.chkPassive.value() != 0);

  const std::string port = settings_.read(ticket::kPort);
  clsFtp_.Inet_FtpPort(wholeNumericValue(port.empty() ? kStandardPort : port));
  return true;
}

void ServerConnection::logInAs(const std::string& user, const std::string& customerCode) {
  const std::string code(lastCharacters(customerCode, kCodeInPassword));
  if (contains(servers_.FtpServerHost, configured::kProviderWord)) {
    clsFtp_.User(withoutLastCharacters(servers_.FtpDomain, kDroppedOfDomain) + user);
    clsFtp_.Password(configured::kProviderPasswordPrefix + code);
  } else {
    clsFtp_.User(user + "@" + servers_.FtpDomain);
    clsFtp_.Password(configured::kPasswordPrefix + code);
  }
}

bool ServerConnection::enterFolder(std::string_view path) {
  while (!path.empty()) {
    // "/" separates where there is one; only without it does "\" separate.
    auto separator = path.find('/');
    if (separator == std::string_view::npos) separator = path.find('\\');
    const std::string_view level = path.substr(0, separator);
    if (!level.empty() && !enterLevel(level)) return false;
    if (separator == std::string_view::npos) return true;
    path.remove_prefix(separator + 1);
  }
  return true;
}

bool ServerConnection::enterLevel(std::string_view name) {
  if (!listing_.findFolder("D " + std::string(name))) return false;
  clsFtp_.CurDir(std::string(name));
  listing_.Ftp_ListFiles();
  return true;
}

bool ServerConnection::fail(const std::string& text) {
  form_.MsgLabel.setCaption(text);
  clsFtp_.CloseSession();
  return false;
}

}  // namespace karvel
