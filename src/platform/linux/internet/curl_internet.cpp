#include "platform/linux/internet/curl_internet.h"

#include <curl/curl.h>

#include <chrono>
#include <initializer_list>
#include <utility>

#include "platform/linux/internet/ftp_url.h"
#include "platform/linux/internet/system_message.h"
#include "platform/linux/internet/upload_reader.h"
#include "platform/linux/system/system_clock.h"
#include "text/server_text.h"

namespace karvel {
namespace {

constexpr int kDefaultPort = 21;
constexpr int kHighestPort = 65535;
constexpr std::size_t kLongestResponse = 255;               ///< bytes
constexpr std::size_t kLongestListing = 128 * 1024 * 1024;  ///< bytes

/// A text that could end a command line, and so begin another one.
bool isUnsafe(std::string_view text) {
  constexpr std::string_view kLineBreakers("\r\n\0", 3);
  return text.find_first_of(kLineBreakers) != std::string_view::npos;
}

bool isAnyUnsafe(std::initializer_list<std::string_view> texts) {
  for (const std::string_view text : texts) {
    if (isUnsafe(text)) return true;
  }
  return false;
}

/// A name that libcurl can send as the name of a file.
bool isFileName(std::string_view name) {
  return !name.empty() && name.back() != '/' && !isUnsafe(name);
}

bool isWholeFolder(std::string_view pattern) {
  return pattern.empty() || pattern == "*" || pattern == "*.*";
}

FtpConnection::TransferType transferType(std::uint32_t flags) {
  return (flags & Internet::kTransferAscii) != 0 ? FtpConnection::TransferType::kText
                                                 : FtpConnection::TransferType::kBinary;
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

Internet::FindData findDataOf(ListedEntry&& entry) {
  return {std::move(entry.name), entry.folder, entry.size, entry.time};
}

}  // namespace

CurlInternet::~CurlInternet() {
  sessions_.clear();
  if (libraryReady_) curl_global_cleanup();
}

Internet::Handle CurlInternet::open() {
  // Not before: the library is loaded by its first call.
  if (!libraryReady_) libraryReady_ = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
  if (!libraryReady_) return fail(kErrorInternal), 0;
  roots_.emplace(++lastHandle_, FtpTimeLimits());
  return lastHandle_;
}

bool CurlInternet::setOption(Handle root, std::uint32_t option, std::uint32_t milliseconds) {
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

Internet::Handle CurlInternet::connect(Handle root, const Account& account, std::uint32_t flags) {
  const auto found = roots_.find(root);
  if (found == roots_.end()) return fail(kErrorInvalidHandle), 0;
  const std::string host = account.host.value_or("");
  FtpConnection::Login login;
  login.user = account.user.value_or("anonymous");
  login.password = account.password.value_or(account.user ? "" : "anonymous@");
  login.port = account.port == 0 ? kDefaultPort : account.port;
  login.passive = (flags & kFlagPassive) != 0;
  const bool portFits = login.port > 0 && login.port <= kHighestPort;
  if (!portFits || isAnyUnsafe({host, login.user, login.password})) {
    return fail(kErrorInvalidParameter), 0;
  }
  const auto urlHostName = urlHost(host);
  if (!urlHostName) return fail(kErrorNameNotResolved), 0;
  login.host = *urlHostName;

  auto connection = std::make_unique<FtpConnection>(std::move(login), found->second);
  if (!conclude(*connection, connection->logIn())) return 0;
  sessions_.emplace(++lastHandle_, Session{root, std::move(connection), {}});
  return lastHandle_;
}

bool CurlInternet::close(Handle handle) {
  if (enumerations_.erase(handle) != 0) return true;
  if (sessions_.count(handle) != 0) {
    closeEnumerationsOf(handle);
    sessions_.erase(handle);
    return true;
  }
  if (roots_.erase(handle) == 0) return fail(kErrorInvalidHandle);
  closeSessionsOf(handle);
  return true;
}

std::optional<std::string> CurlInternet::currentDirectory(Handle session) {
  const Session* const found = find(session);
  if (found == nullptr) return std::nullopt;
  FtpConnection& connection = *found->connection;
  if (!conclude(connection, connection.command("PWD"))) return std::nullopt;
  auto folder = quotedFolder(connection.reply().text());
  if (!folder) {
    conclude(connection, kErrorExtended);
    return std::nullopt;
  }
  return codePage932OfServerText(*folder);
}

bool CurlInternet::setCurrentDirectory(Handle session, const std::string& folder) {
  return command(session, "CWD ", folder);
}

bool CurlInternet::putFile(Handle session, const std::string& localPath,
                           const std::string& remoteName, std::uint32_t transferFlags) {
  const Session* const found = find(session);
  if (found == nullptr) return false;
  if (!isFileName(remoteName)) return fail(kErrorInvalidParameter);
  const auto type = transferType(transferFlags);
  const bool text = type == FtpConnection::TransferType::kText;
  auto reader =
      UploadReader::open(localPath, text ? UploadReader::Mode::kText : UploadReader::Mode::kBinary);
  if (!reader) return fail(kErrorFileNotFound);
  FtpConnection& connection = *found->connection;
  return conclude(connection, connection.upload(found->onServer(remoteName), *reader, type));
}

bool CurlInternet::renameFile(Handle session, const std::string& from, const std::string& to) {
  if (isUnsafe(to)) return fail(kErrorInvalidParameter);
  return command(session, "RNFR ", from) && command(session, "RNTO ", to);
}

bool CurlInternet::deleteFile(Handle session, const std::string& remoteName) {
  return command(session, "DELE ", remoteName);
}

Internet::Handle CurlInternet::findFirst(Handle session, const std::string& pattern,
                                         FindData& entry) {
  Session* const found = find(session);
  if (found == nullptr) return 0;
  if (isUnsafe(pattern)) return fail(kErrorInvalidParameter), 0;
  closeEnumerationsOf(session);
  found->writtenNames.clear();
  std::string text;
  const auto sink = [&text](std::string_view bytes) {
    text.append(bytes);
    return text.size() <= kLongestListing;
  };
  const std::string argument = isWholeFolder(pattern) ? "" : pattern;
  FtpConnection& connection = *found->connection;
  if (!conclude(connection, connection.list(argument, sink))) return 0;
  // Dates without a year are read against the local time.
  FtpListing listing(std::move(text), SystemClock().now());
  if (!nextEntry(*found, listing, entry)) return 0;
  enumerations_.emplace(++lastHandle_, Enumeration{session, std::move(listing)});
  return lastHandle_;
}

bool CurlInternet::findNext(Handle find, FindData& entry) {
  const auto found = enumerations_.find(find);
  if (found == enumerations_.end()) return fail(kErrorInvalidHandle);
  return nextEntry(sessions_.at(found->second.session), found->second.listing, entry);
}

std::string CurlInternet::systemMessage(ErrorNumber number) {
  return karvel::systemMessage(number);
}

bool CurlInternet::fail(ErrorNumber error) {
  lastError_ = error;
  return false;
}

bool CurlInternet::conclude(const FtpConnection& connection, ErrorNumber error) {
  const std::string text = codePage932OfServerText(connection.reply().text());
  lastResponse_ = {kErrorExtended, std::string(cutBytes932(text, kLongestResponse))};
  return error == 0 || fail(error);
}

const std::string& CurlInternet::Session::onServer(const std::string& name) const {
  const auto written = writtenNames.find(name);
  return written != writtenNames.end() ? written->second : name;
}

CurlInternet::Session* CurlInternet::find(Handle session) {
  const auto found = sessions_.find(session);
  if (found != sessions_.end()) return &found->second;
  fail(kErrorInvalidHandle);
  return nullptr;
}

bool CurlInternet::command(Handle session, const std::string& verb, const std::string& name) {
  const Session* const found = find(session);
  if (found == nullptr) return false;
  if (name.empty() || isUnsafe(name)) return fail(kErrorInvalidParameter);
  FtpConnection& connection = *found->connection;
  return conclude(connection, connection.command(verb + found->onServer(name)));
}

void CurlInternet::closeEnumerationsOf(Handle session) {
  std::erase_if(enumerations_,
                [session](const auto& item) { return item.second.session == session; });
}

void CurlInternet::closeSessionsOf(Handle root) {
  std::erase_if(sessions_, [this, root](const auto& item) {
    if (item.second.root != root) return false;
    closeEnumerationsOf(item.first);
    return true;
  });
}

bool CurlInternet::nextEntry(Session& session, FtpListing& listing, FindData& entry) {
  auto listed = listing.next();
  if (!listed) return fail(kErrorNoMoreFiles);
  if (!listed->writtenName.empty()) session.writtenNames[listed->name] = listed->writtenName;
  entry = findDataOf(std::move(*listed));
  return true;
}

}  // namespace karvel
