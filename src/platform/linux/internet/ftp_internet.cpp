#include "platform/linux/internet/ftp_internet.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

#include "platform/linux/system/system_clock.h"

namespace karvel {
namespace {

constexpr int kDefaultPort = 21;
constexpr int kHighestPort = 65535;
/// Shown like a reply of the server, whose listing it is.
constexpr const char* kUnreadableListing = "サーバーのファイル一覧の形式を読み取れませんでした。";

/// A text that could end a command line, and so begin another one.
bool isUnsafe(std::string_view text) {
  constexpr std::string_view kLineBreakers("\r\n\0", 3);
  return text.find_first_of(kLineBreakers) != std::string_view::npos;
}

/// Nothing unsafe, a port that there is, and no password that would go with a user of no name.
bool isPossible(const Internet::Account& account) {
  const auto unsafe = [](const std::optional<std::string>& text) {
    return text && isUnsafe(*text);
  };
  return !unsafe(account.host) && !unsafe(account.user) && !unsafe(account.password) &&
         account.port >= 0 && account.port <= kHighestPort && (account.user || !account.password);
}

struct Message {
  Internet::ErrorNumber number;
  const char* text;
};

constexpr Message kMessages[] = {
    {2, "ファイルが見つからないか、読み取れません。"},
    {3, "フォルダーが見つかりません。"},
    {5, "アクセスが許可されていません。"},
    {6, "ハンドルが正しくありません。"},
    {8, "メモリが不足しています。"},
    {18, "これ以上ファイルはありません。"},
    {32, "ファイルは別のプログラムで使われています。"},
    {80, "同じ名前のファイルがすでにあります。"},
    {87, "引数に誤りがあります。"},
    {112, "ディスクの空きが不足しています。"},
    {12001, "これ以上の接続はできません。"},
    {12005, "アドレスの形式が正しくありません。"},
    {12006, "この通信方式には対応していません。"},
    {12009, "オプションの番号が正しくありません。"},
    {12017, "処理は取り消されました。"},
    {12110, "転送中のため、この操作はできません。"},
    {12111, "FTP の接続が切断されました。"},
};

bool isWholeFolder(std::string_view pattern) {
  return pattern.empty() || pattern == "*" || pattern == "*.*";
}

/// The folder in a reply to PWD: between quotation marks, a mark inside written twice.
std::optional<std::string> quotedFolder(std::string_view reply) {
  const auto begin = reply.find('"');
  if (begin == std::string_view::npos) return std::nullopt;
  std::string folder;
  for (std::size_t i = begin + 1; i < reply.size(); ++i) {
    const bool quote = reply[i] == '"';
    const bool doubled = quote && i + 1 < reply.size() && reply[i + 1] == '"';
    if (quote && !doubled) return folder;
    folder.push_back(reply[i]);
    if (doubled) ++i;
  }
  return std::nullopt;
}

}  // namespace

Internet::Handle FtpInternet::open() {
  roots_.emplace(++lastHandle_, FtpTimeLimits());
  return lastHandle_;
}

bool FtpInternet::setOption(Handle root, std::uint32_t option, std::uint32_t milliseconds) {
  const auto found = roots_.find(root);
  if (found == roots_.end()) return fail(kErrorInvalidHandle);
  const std::chrono::milliseconds limit{milliseconds};
  if (option == kOptionConnectTimeout) {
    found->second.connect = limit;
  } else if (option == kOptionReceiveTimeout) {
    found->second.answer = limit;
  } else {
    return fail(kErrorInvalidParameter);
  }
  return true;
}

Internet::Handle FtpInternet::connect(Handle root, const Account& account, std::uint32_t flags) {
  const auto found = roots_.find(root);
  if (found == roots_.end()) return fail(kErrorInvalidHandle), 0;
  if (!isPossible(account)) return fail(kErrorInvalidParameter), 0;
  const auto port = static_cast<std::uint16_t>(account.port == 0 ? kDefaultPort : account.port);
  auto ftp = std::make_unique<FtpSession>(found->second, (flags & kFlagPassive) != 0);
  const ErrorNumber error =
      ftp->logIn(account.host.value_or(""), port, lookup_, account.user.value_or("anonymous"),
                 account.password.value_or(account.user ? "" : "anonymous@"));
  if (!conclude(*ftp, error)) return 0;
  sessions_.emplace(++lastHandle_, Session{root, std::move(ftp)});
  return lastHandle_;
}

bool FtpInternet::close(Handle handle) {
  if (enumerations_.erase(handle) != 0) return true;
  if (sessions_.contains(handle)) {
    closeEnumerationsOf(handle);
    sessions_.erase(handle);
    return true;
  }
  if (roots_.erase(handle) == 0) return fail(kErrorInvalidHandle);
  closeSessionsOf(handle);
  return true;
}

std::optional<std::string> FtpInternet::currentDirectory(Handle session) {
  const Session* const found = find(session);
  if (found == nullptr) return std::nullopt;
  FtpSession& ftp = *found->ftp;
  if (!conclude(ftp, ftp.command("PWD"))) return std::nullopt;
  auto folder = quotedFolder(ftp.reply().text());
  if (!folder) {
    fail(kErrorExtended);
    return std::nullopt;
  }
  return folder;
}

bool FtpInternet::setCurrentDirectory(Handle session, const std::string& folder) {
  return command(session, "CWD ", folder);
}

bool FtpInternet::putFile(Handle session, const std::string& localPath,
                          const std::string& remoteName, std::uint32_t transferType) {
  const Session* const found = find(session);
  if (found == nullptr) return false;
  if (remoteName.empty() || isUnsafe(remoteName)) return fail(kErrorInvalidParameter);
  const bool text = (transferType & kTransferAscii) != 0;
  auto reader = UploadReader::open(localPath, text ? TransferType::kText : TransferType::kBinary);
  if (!reader) return fail(kErrorFileNotFound);
  FtpSession& ftp = *found->ftp;
  return conclude(ftp, ftp.upload(remoteName, *reader));
}

bool FtpInternet::renameFile(Handle session, const std::string& from, const std::string& to) {
  const Session* const found = find(session);
  if (found == nullptr) return false;
  if (from.empty() || to.empty() || isUnsafe(from) || isUnsafe(to)) {
    return fail(kErrorInvalidParameter);
  }
  FtpSession& ftp = *found->ftp;
  return conclude(ftp, ftp.rename(from, to));
}

bool FtpInternet::deleteFile(Handle session, const std::string& remoteName) {
  return command(session, "DELE ", remoteName);
}

Internet::Handle FtpInternet::findFirst(Handle session, const std::string& pattern,
                                        FindData& entry) {
  const Session* const found = find(session);
  if (found == nullptr) return 0;
  if (isUnsafe(pattern)) return fail(kErrorInvalidParameter), 0;
  closeEnumerationsOf(session);
  // Dates without a year are read against the local time.
  FtpListing listing(SystemClock().now());
  FtpSession& ftp = *found->ftp;
  if (!conclude(ftp, ftp.list(isWholeFolder(pattern) ? "" : pattern, listing))) return 0;
  if (!nextEntry(listing, entry)) return 0;
  enumerations_.emplace(++lastHandle_, Enumeration{session, std::move(listing)});
  return lastHandle_;
}

bool FtpInternet::findNext(Handle find, FindData& entry) {
  const auto found = enumerations_.find(find);
  if (found == enumerations_.end()) return fail(kErrorInvalidHandle);
  return nextEntry(found->second.listing, entry);
}

std::optional<std::string> FtpInternet::features(Handle session) {
  const Session* const found = find(session);
  if (found == nullptr || !conclude(*found->ftp, found->ftp->command("FEAT"))) return std::nullopt;
  return found->ftp->reply().text();
}

std::string FtpInternet::systemMessage(ErrorNumber number) {
  const auto* const found =
      std::find_if(std::begin(kMessages), std::end(kMessages),
                   [number](const Message& message) { return message.number == number; });
  return found == std::end(kMessages) ? std::string() : std::string(found->text);
}

bool FtpInternet::fail(ErrorNumber error) {
  lastError_ = error;
  return false;
}

bool FtpInternet::conclude(FtpSession& ftp, ErrorNumber error) {
  lastReplies_ = ftp.takeReplies();
  lastResponse_ = {kErrorExtended, ftp.reply().text()};
  return error == 0 || fail(error);
}

FtpInternet::Session* FtpInternet::find(Handle session) {
  const auto found = sessions_.find(session);
  if (found != sessions_.end()) return &found->second;
  fail(kErrorInvalidHandle);
  return nullptr;
}

bool FtpInternet::command(Handle session, const std::string& verb, const std::string& name) {
  const Session* const found = find(session);
  if (found == nullptr) return false;
  if (name.empty() || isUnsafe(name)) return fail(kErrorInvalidParameter);
  return conclude(*found->ftp, found->ftp->command(verb + name));
}

void FtpInternet::closeEnumerationsOf(Handle session) {
  std::erase_if(enumerations_,
                [session](const auto& item) { return item.second.session == session; });
}

void FtpInternet::closeSessionsOf(Handle root) {
  std::erase_if(sessions_, [this, root](const auto& item) {
    if (item.second.root != root) return false;
    closeEnumerationsOf(item.first);
    return true;
  });
}

bool FtpInternet::nextEntry(FtpListing& listing, FindData& entry) {
  auto listed = listing.next();
  if (!listed && listing.unreadable()) {
    lastResponse_ = {kErrorExtended, kUnreadableListing};
    return fail(kErrorExtended);
  }
  if (!listed) return fail(kErrorNoMoreFiles);
  entry = std::move(*listed);
  return true;
}

}  // namespace karvel
