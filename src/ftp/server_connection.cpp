#include "ftp/server_connection.h"

#include "text/numeric_value.h"
#include "text/strings.h"
#include "ui/configured_values.h"

namespace karvel {
namespace {

using Field = FtpForm::Field;
using Destination = FtpForm::Destination;

constexpr std::size_t kCodeInPassword = 6;
constexpr std::size_t kDroppedOfDomain = 3;
constexpr const char* kStandardPort = "21";

std::string withoutLastCharacters(const std::string& text, std::size_t count) {
  const std::size_t length = characterCount(text);
  return std::string(firstCharacters(text, length > count ? length - count : 0));
}

}  // namespace

ServerConnection::ServerConnection(FtpForm& form, SessionHolder& session, RemoteListing& listing,
                                   ServerList& servers, IniRedWrt& settings)
    : form_(form), session_(session), listing_(listing), servers_(servers), settings_(settings) {
}

bool ServerConnection::Ftp_Open() {
  const bool ownSite = form_.destinationIs(Destination::kUserSite);
  if (!(ownSite ? takeOwnAccount() : takeServiceAccount())) return false;

  McWinFTP& ftp = *session_.clsFtp;
  ftp.OpenSession();
  if (ftp.hFTP() == 0) return fail("FTP:OPEN NG " + form_.LastFtpError);

  listing_.Ftp_ListFiles();
  const std::string_view folder = ownSite ? trimmed(form_.text(Field::kSiteFolder)) : "";
  if (!enterFolder(folder)) return fail("指定フォルダがありません");
  form_.MsgLabel.setCaption("FTP:OPEN OK");
  return true;
}

bool ServerConnection::takeOwnAccount() {
  const std::string& host = form_.text(Field::kServer);
  const std::string& user = form_.text(Field::kAccount);
  const std::string& password = form_.text(Field::kPassword);
  if (host.empty() || user.empty() || password.empty()) return false;

  McWinFTP& ftp = *session_.clsFtp;
  ftp.RemoteHost(std::string(trimmed(host)));
  ftp.User(std::string(trimmed(user)));
  ftp.Password(std::string(trimmed(password)));
  ftp.PassiveFlag(form_.chkPassive.value() != 0);
  ftp.Inet_FtpPort(wholeNumericValue(form_.text(Field::kPort)));
  return true;
}

bool ServerConnection::takeServiceAccount() {
  const std::string user = settings_.readTicket(section::kFtp, "FTP USER");
  const std::string customerCode = settings_.readTicket(section::kFtp, "FTP CODE");
  if (user.empty() || customerCode.empty()) return false;

  servers_.LoadServerList();
  McWinFTP& ftp = *session_.clsFtp;
  ftp.RemoteHost(servers_.FtpServerHost);
  logInAs(user, customerCode);

  const std::string mode = asciiLower(settings_.readTicket(section::kFtp, "FTP MODE"));
  form_.chkPassive.setValue(contains(mode, "pasv") ? 1 : 0);
  ftp.PassiveFlag(form_.chkPassive.value() != 0);

  const std::string port = settings_.readTicket(section::kFtp, "FTP PORT");
  ftp.Inet_FtpPort(wholeNumericValue(port.empty() ? kStandardPort : port));
  return true;
}

void ServerConnection::logInAs(const std::string& user, const std::string& customerCode) {
  McWinFTP& ftp = *session_.clsFtp;
  const std::string code(lastCharacters(customerCode, kCodeInPassword));
  if (contains(servers_.FtpServerHost, configured::kProviderWord)) {
    ftp.User(withoutLastCharacters(servers_.FtpDomain, kDroppedOfDomain) + user);
    ftp.Password(configured::kProviderPasswordPrefix + code);
  } else {
    ftp.User(user + "@" + servers_.FtpDomain);
    ftp.Password(configured::kPasswordPrefix + code);
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
  session_.clsFtp->CurDir(std::string(name));
  listing_.Ftp_ListFiles();
  return true;
}

bool ServerConnection::fail(const std::string& text) {
  form_.MsgLabel.setCaption(text);
  session_.clsFtp->CloseSession();
  return false;
}

}  // namespace karvel
