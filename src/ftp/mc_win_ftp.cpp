#include "ftp/mc_win_ftp.h"

#include <array>
#include <optional>
#include <utility>

#include "text/code_page.h"
#include "text/server_text.h"
#include "text/strings.h"

namespace karvel {
namespace {

constexpr std::uint32_t kTimeLimit = 10000;  // milliseconds
constexpr std::int32_t kStandardPort = 21;
constexpr std::int32_t kHighestPort = 60000;
constexpr std::int32_t kTextTransfer = 1;
constexpr std::uint32_t kPassiveConnect = Internet::kFlagAsync | Internet::kFlagPassive;
constexpr std::uint32_t kActiveConnect = Internet::kFlagAsync;

struct ErrorText {
  Internet::ErrorNumber number;
  const char* text;
};

constexpr std::array kErrorTexts{
    ErrorText{12002, "要求がタイムアウトになりました。"},
    ErrorText{12004, "内部エラーが発生しました。"},
    ErrorText{12007, "サーバー名を解決できませんでした。"},
    ErrorText{12013, "ユーザー名が不明です。"},
    ErrorText{12014, "パスワードが不明です。"},
    ErrorText{12015, "ログオン要求に失敗しました。"},
    ErrorText{12016, "要求された操作は無効です。"},
    ErrorText{12023, "ネットワークにアクセスできませんでした。"},
    ErrorText{12027, "要求の形式が無効です。"},
    ErrorText{12028, "要求されたアイテムが見つかりませんでした。"},
    ErrorText{12029, "サーバー接続に失敗しました。"},
    ErrorText{12030, "サーバー接続が切断されました。"},
    ErrorText{12031, "サーバー接続がリセットされました。"},
};
constexpr const char* kNoText = "エラーが発生しています。";

std::optional<std::string> knownText(Internet::ErrorNumber number) {
  for (const ErrorText& known : kErrorTexts) {
    if (known.number == number) return known.text;
  }
  return std::nullopt;
}

std::optional<std::string> absentIfEmpty(const std::string& text) {
  if (text.empty()) return std::nullopt;
  return toCodePage932(text);
}

}  // namespace

McWinFTP::McWinFTP(Internet& internet, FailureHandler FTPFrr)
    : internet_(internet), FTPFrr_(std::move(FTPFrr)), hInternet_(internet.open()) {
  if (hInternet_ == 0) {
    ReportError(internet_.lastError());
    return;
  }
  internet_.setOption(hInternet_, Internet::kOptionReceiveTimeout, kTimeLimit);
  internet_.setOption(hInternet_, Internet::kOptionConnectTimeout, kTimeLimit);
}

McWinFTP::~McWinFTP() {
  CloseSession();
  if (hInternet_ != 0 && !internet_.close(hInternet_)) ReportError(internet_.lastError());
}

void McWinFTP::PassiveFlag(bool bPassive) {
  connectFlags_ = bPassive ? kPassiveConnect : kActiveConnect;
}

bool McWinFTP::PassiveFlag() const {
  return connectFlags_ == kPassiveConnect;
}

void McWinFTP::Inet_FtpPort(std::int32_t bFtpPort) {
  const bool inRange = bFtpPort >= kStandardPort && bFtpPort <= kHighestPort;
  port_ = inRange ? bFtpPort : kStandardPort;
}

std::int32_t McWinFTP::Inet_FtpPort() const {
  return port_;
}

std::string McWinFTP::CurDir() {
  const auto folder = internet_.currentDirectory(hFTP_);
  if (!folder) {
    ReportError(internet_.lastError());
    return {};
  }
  return names_.read(*folder);
}

void McWinFTP::CurDir(const std::string& szDir) {
  const bool separatorFirst = szDir.starts_with('/') || szDir.starts_with('\\');
  const std::string folder = separatorFirst ? szDir.substr(1) : szDir;
  reported(internet_.setCurrentDirectory(hFTP_, names_.written(folder)));
}

void McWinFTP::OpenSession() {
  if (hInternet_ == 0) return;  // announced when the library did not open
  const Internet::Account account{absentIfEmpty(remoteHost_), port_, absentIfEmpty(user_),
                                  absentIfEmpty(password_)};
  hFTP_ = internet_.connect(hInternet_, account, connectFlags_);
  if (hFTP_ == 0) ReportError(internet_.lastError());
}

void McWinFTP::CloseSession() {
  CloseFind();
  if (hFTP_ == 0) return;
  if (reported(internet_.close(hFTP_)) != 0) hFTP_ = 0;
}

std::int32_t McWinFTP::PutFile(const std::string& szLocalFile, const std::string& szRemoteFile,
                               std::int32_t nTransfer) {
  const std::uint32_t type =
      nTransfer == kTextTransfer ? Internet::kTransferAscii : Internet::kTransferBinary;
  return reported(internet_.putFile(hFTP_, szLocalFile, names_.written(szRemoteFile), type));
}

std::int32_t McWinFTP::RenameFile(const std::string& szExistFile, const std::string& szNewFile) {
  return reported(
      internet_.renameFile(hFTP_, names_.written(szExistFile), names_.written(szNewFile)));
}

std::int32_t McWinFTP::DeleteFile(const std::string& szRemoteFile) {
  return reported(internet_.deleteFile(hFTP_, names_.written(szRemoteFile)));
}

void McWinFTP::FindFile(const std::string& szSearchString) {
  CloseFind();
  names_.forgetNames();
  RemoteFile = std::make_unique<FTPFile>();
  Internet::FindData entry;
  hFind_ = internet_.findFirst(hFTP_, names_.written(szSearchString), entry);
  if (hFind_ != 0) {
    StoreFindData(entry);
  } else {
    endSearch(internet_.lastError());
  }
}

void McWinFTP::NextFile() {
  if (RemoteFile->SearchEnd) return;
  Internet::FindData entry;
  if (internet_.findNext(hFind_, entry)) {
    StoreFindData(entry);
  } else {
    endSearch(internet_.lastError());
  }
}

void McWinFTP::CloseFind() {
  if (hFind_ == 0) return;
  if (reported(internet_.close(hFind_)) != 0) hFind_ = 0;
}

void McWinFTP::StoreFindData(const Internet::FindData& entry) {
  RemoteFile->SearchEnd = false;
  RemoteFile->FileName = names_.read(entry.name);
  RemoteFile->FileDate = entry.time;
  RemoteFile->FileSize = static_cast<double>(entry.size);
  RemoteFile->FileType = entry.folder ? FTPFile::kFolder : 0;
}

void McWinFTP::endSearch(Internet::ErrorNumber number) {
  ReportError(number);
  RemoteFile->SearchEnd = true;
}

void McWinFTP::ReportError(Internet::ErrorNumber number) {
  if (number == Internet::kErrorNoMoreFiles) return;  // the end of an enumeration, no failure

  std::string text;
  if (number == Internet::kErrorExtended) {
    const Internet::Response response = internet_.lastResponse();
    number = response.number;
    // Its end is the first NUL, as in the library's buffer.
    text = inOneLine(textOfServer(response.text.substr(0, response.text.find('\0'))));
  } else if (const auto known = knownText(number)) {
    text = *known;
  } else if (number != 0) {  // the system's text of 0 is a success
    text = internet_.systemMessage(number);
  }
  if (text.empty()) text = kNoText;
  FTPFrr_(static_cast<std::int32_t>(number), text);
}

std::int32_t McWinFTP::reported(bool done) {
  if (!done) ReportError(internet_.lastError());
  return done ? 1 : 0;
}

}  // namespace karvel
