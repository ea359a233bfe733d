#include "ftp/safe_upload.h"

#include <algorithm>
#include <array>

#include "text/strings.h"

namespace karvel {
namespace {

constexpr std::array kTextExtensions{".ini", ".cgi", ".php", ".txt", ".tmp",
                                     ".new", ".mas", ".htm", ".inf", ".csv"};
constexpr std::size_t kExtensionLength = 3;

/// The name with its last three characters replaced; a shorter name is replaced as a whole.
std::string temporaryName(const std::string& name) {
  const std::size_t length = characterCount(name);
  const std::size_t stem = length > kExtensionLength ? length - kExtensionLength : 0;
  return std::string(firstCharacters(name, stem)) + "xxx";
}

std::string fileMark(const std::string& name) {
  return "F " + name + "\t";
}

}  // namespace

bool IsBinaryFile(const std::string& name) {
  const std::string lower = asciiLower(name);
  return std::none_of(kTextExtensions.begin(), kTextExtensions.end(),
                      [&](const char* extension) { return contains(lower, extension); });
}

SafeUpload::SafeUpload(FtpForm& form, McWinFTP& clsFtp, RemoteListing& listing, Files& files,
                       RunLog& log)
    : form_(form), clsFtp_(clsFtp), listing_(listing), files_(files), log_(log) {
}

bool SafeUpload::Ftp_PutFile(const std::string& folder, const std::string& name) {
  const std::string localFile = folder + name;
  if (!files_.exists(localFile)) return false;

  const std::string temp = temporaryName(name);
  const std::int32_t transfer = IsBinaryFile(name) ? 0 : 1;
  if (clsFtp_.PutFile(localFile, temp, transfer) == 0) {
    return reportFailure("FTP:PutFile NG ");
  }
  if (!Ftp_Rename(name, temp)) return reportFailure("FTP:Rename NG ");
  report("FTP:PutFile OK");
  return true;
}

bool SafeUpload::Ftp_Rename(const std::string& target, const std::string& temp) {
  if (target.empty()) return false;
  listing_.Ftp_ListFiles();
  const auto slot = listing_.findFile(fileMark(temp));
  if (!slot || listing_.fileSize(*slot) < 0) return false;

  if (isListed(target)) {
    clsFtp_.DeleteFile(target);
    listing_.Ftp_ListFiles();
  }
  if (isListed(target)) return false;

  clsFtp_.RenameFile(temp, target);
  listing_.Ftp_ListFiles();
  if (!isListed(target)) return false;
  report("FTP:RenameFile");
  return true;
}

void SafeUpload::Ftp_DeleteListed(const std::string& name) {
  if (listing_.findFile("F " + name)) clsFtp_.DeleteFile(name);
}

bool SafeUpload::isListed(const std::string& name) const {
  return listing_.findFile(fileMark(name)).has_value();
}

bool SafeUpload::reportFailure(const std::string& text) {
  report(text + form_.LastFtpError);
  return false;
}

void SafeUpload::report(const std::string& text) {
  form_.MsgLabel.setCaption(text);
  log_.WriteLog("HS-" + text);
}

}  // namespace karvel
