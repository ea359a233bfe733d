#include "platform/linux/internet/ftp_connection.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <utility>

#include "platform/linux/internet/curl_error.h"
#include "platform/linux/internet/ftp_url.h"

namespace karvel {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr milliseconds kUnlimited = std::chrono::hours{24};  ///< longer than any exchange
constexpr seconds kQuitLimit{2};
constexpr std::size_t kReplyLimit = 64 * 1024;  ///< bytes; longer ones come from no FTP server
constexpr milliseconds kDataConnectSlice{2};
// Replies of a server.
constexpr int kPassive = 227;
constexpr int kExtendedPassive = 229;
constexpr int kClosing = 421;
constexpr int kNotLoggedIn = 530;
constexpr long kKeepForever = 0x7FFFFFFF;  ///< seconds

struct ListCleanup {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

int portOf(const sockaddr& address) {
  if (address.sa_family == AF_INET6) {
    return ntohs(reinterpret_cast<const sockaddr_in6&>(address).sin6_port);
  }
  return ntohs(reinterpret_cast<const sockaddr_in&>(address).sin_port);
}

/// libcurl counts in whole seconds and knows no limit as 0.
long wholeSeconds(milliseconds time) {
  return std::max<long>(1, std::chrono::ceil<seconds>(time).count());
}

}  // namespace

FtpConnection::FtpConnection(Login login, FtpTimeLimits limits)
    : login_(std::move(login)),
      limits_(limits),
      multi_(curl_multi_init()),
      easy_(curl_easy_init()) {
}

FtpConnection::~FtpConnection() {
  if (!loggedIn_) return;
  lost_ = false;  // only ends it, which no late reply can harm
  // An exchange without a command whose connection is not kept: libcurl says QUIT itself.
  prepare("");
  curl_easy_setopt(easy_.get(), CURLOPT_NOBODY, 1L);
  curl_easy_setopt(easy_.get(), CURLOPT_FORBID_REUSE, 1L);
  curl_easy_setopt(easy_.get(), CURLOPT_SERVER_RESPONSE_TIMEOUT, long{kQuitLimit.count()});
  perform();
}

FtpConnection::ErrorNumber FtpConnection::logIn() {
  if (!multi_ || !easy_) return Internet::kErrorInternal;
  prepare("");
  curl_easy_setopt(easy_.get(), CURLOPT_NOBODY, 1L);
  connecting_ = true;
  const ErrorNumber error = perform();
  loggedIn_ = error == 0;
  return error;
}

FtpConnection::ErrorNumber FtpConnection::command(const std::string& line) {
  // The asterisk leaves a refusal to us; libcurl would drop the connection for it.
  const std::unique_ptr<curl_slist, ListCleanup> lines(
      curl_slist_append(nullptr, ("*" + line).c_str()));
  prepare("");
  curl_easy_setopt(easy_.get(), CURLOPT_NOBODY, 1L);
  curl_easy_setopt(easy_.get(), CURLOPT_QUOTE, lines.get());
  const ErrorNumber error = perform();
  const bool positive = reply_.code() >= 200 && !reply_.refused();
  return error == 0 && !positive ? Internet::kErrorExtended : error;
}

FtpConnection::ErrorNumber FtpConnection::upload(const std::string& remoteName,
                                                 UploadReader& reader, TransferType type) {
  prepare(remoteName);
  curl_easy_setopt(easy_.get(), CURLOPT_UPLOAD, 1L);
  curl_easy_setopt(easy_.get(), CURLOPT_TRANSFERTEXT, type == TransferType::kText ? 1L : 0L);
  reader_ = &reader;
  return perform();
}

FtpConnection::ErrorNumber FtpConnection::list(const std::string& argument, const Sink& sink) {
  prepare("");
  const std::string request = "LIST " + argument;
  if (!argument.empty()) curl_easy_setopt(easy_.get(), CURLOPT_CUSTOMREQUEST, request.c_str());
  sink_ = &sink;
  return perform();
}

void FtpConnection::prepare(const std::string& path) {
  curl_easy_reset(easy_.get());  // options only: the connection stays
  reader_ = nullptr;
  sink_ = nullptr;
  listener_ = CURL_SOCKET_BAD;
  setAddress(path);
  setCallbacks();
  setManners();
}

void FtpConnection::setAddress(const std::string& path) {
  CURL* easy = easy_.get();
  const std::string url =
      "ftp://" + login_.host + ":" + std::to_string(login_.port) + "/" + urlPath(path);
  curl_easy_setopt(easy, CURLOPT_URL, url.c_str());
  curl_easy_setopt(easy, CURLOPT_PATH_AS_IS, 1L);
  curl_easy_setopt(easy, CURLOPT_USERNAME, login_.user.c_str());
  curl_easy_setopt(easy, CURLOPT_PASSWORD, login_.password.c_str());
  // Names go to the server as they are, relative to the folder that our own CWD has chosen.
  curl_easy_setopt(easy, CURLOPT_FTP_FILEMETHOD, long{CURLFTPMETHOD_NOCWD});
  if (!login_.passive) curl_easy_setopt(easy, CURLOPT_FTPPORT, "-");
  // PASV and PORT, which every server knows; libcurl takes EPSV and EPRT where IPv6 needs them.
  curl_easy_setopt(easy, CURLOPT_FTP_USE_EPSV, 0L);
  curl_easy_setopt(easy, CURLOPT_FTP_USE_EPRT, 0L);
  curl_easy_setopt(easy, CURLOPT_FTP_SKIP_PASV_IP, 1L);
}

void FtpConnection::setCallbacks() {
  CURL* easy = easy_.get();
  curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &FtpConnection::onReplyLine);
  curl_easy_setopt(easy, CURLOPT_HEADERDATA, this);
  curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &FtpConnection::onReceived);
  curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
  curl_easy_setopt(easy, CURLOPT_READFUNCTION, &FtpConnection::onSend);
  curl_easy_setopt(easy, CURLOPT_READDATA, this);
  curl_easy_setopt(easy, CURLOPT_OPENSOCKETFUNCTION, &FtpConnection::onOpenSocket);
  curl_easy_setopt(easy, CURLOPT_OPENSOCKETDATA, this);
}

void FtpConnection::setManners() {
  CURL* easy = easy_.get();
  curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "ftp");
  curl_easy_setopt(easy, CURLOPT_PROXY, "");  // the environment's one neither
  curl_easy_setopt(easy, CURLOPT_NETRC, long{CURL_NETRC_IGNORED});
  curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);  // does not wait for a slow name server
  curl_easy_setopt(easy, CURLOPT_MAXAGE_CONN, kKeepForever);
  // The time watch is stricter. Only the reply that closes a transfer is waited for inside
  // libcurl, and that by the response limit.
  curl_easy_setopt(easy, CURLOPT_SERVER_RESPONSE_TIMEOUT, wholeSeconds(limits_.transfer()));
  curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, long{milliseconds{kUnlimited}.count()});
  curl_easy_setopt(easy, CURLOPT_ACCEPTTIMEOUT_MS, long{milliseconds{kUnlimited}.count()});
}

FtpConnection::ErrorNumber FtpConnection::perform() {
  if (lost_) return Internet::kErrorConnectionAborted;
  reply_.clear();
  readFailed_ = false;
  sinkFailed_ = false;
  watch_.begin(limits_.exchange(), connecting_ ? limits_.connect : limits_.answer);
  if (curl_multi_add_handle(multi_.get(), easy_.get()) != CURLM_OK) return Internet::kErrorInternal;
  const ErrorNumber error = run();
  // Before its end this closes the connection, so that no late reply can answer another command.
  curl_multi_remove_handle(multi_.get(), easy_.get());
  return error;
}

FtpConnection::ErrorNumber FtpConnection::run() {
  while (true) {
    int running = 0;
    if (curl_multi_perform(multi_.get(), &running) != CURLM_OK) return Internet::kErrorInternal;
    if (sinkFailed_) return Internet::kErrorInternal;
    if (running == 0) return reply_.preliminary() ? abandon() : errorOf(result());
    if (reply_.size() > kReplyLimit) return Internet::kErrorExtended;
    noticeConnect();
    const milliseconds remaining = watch_.remaining();
    if (remaining.count() == 0) return Internet::kErrorTimeout;
    waitForSockets(remaining);
  }
}

FtpConnection::ErrorNumber FtpConnection::abandon() {
  const ErrorNumber error = errorOf(result());
  // The reply that closes the transfer is still to come, and would answer the next command.
  lost_ = true;
  return error == 0 ? Internet::kErrorConnectionAborted : error;
}

void FtpConnection::awaitDataConnection() {
  const curl_socket_t listener = std::exchange(listener_, CURL_SOCKET_BAD);
  if (listener == CURL_SOCKET_BAD) return;
  curl_socket_t control = CURL_SOCKET_BAD;
  curl_easy_getinfo(easy_.get(), CURLINFO_ACTIVESOCKET, &control);
  std::array<pollfd, 2> sockets{{{listener, POLLIN, 0}, {control, POLLIN, 0}}};
  poll(sockets.data(), sockets.size(), static_cast<int>(limits_.answer.count()));
}

void FtpConnection::waitForSockets(milliseconds time) {
  // libcurl 7.88 can forget to wait for the data connection that it opens after these replies.
  const bool openingData = reply_.code() == kPassive || reply_.code() == kExtendedPassive;
  const milliseconds slice = openingData ? std::min(time, kDataConnectSlice) : time;
  curl_multi_poll(multi_.get(), nullptr, 0, static_cast<int>(slice.count()), nullptr);
}

void FtpConnection::beginNextStep() {
  watch_.beginStep(reply_.preliminary() ? limits_.transfer() : limits_.answer);
}

void FtpConnection::noticeConnect() {
  curl_off_t connectTime = 0;
  if (!connecting_) return;
  curl_easy_getinfo(easy_.get(), CURLINFO_CONNECT_TIME_T, &connectTime);
  if (connectTime == 0) return;
  connecting_ = false;
  beginNextStep();
}

CURLcode FtpConnection::result() const {
  int left = 0;
  const CURLMsg* message = curl_multi_info_read(multi_.get(), &left);
  return message != nullptr && message->msg == CURLMSG_DONE ? message->data.result
                                                            : CURLE_FAILED_INIT;
}

FtpConnection::ErrorNumber FtpConnection::errorOf(CURLcode result) const {
  if (readFailed_) return Internet::kErrorFileNotFound;
  if (lost_) return Internet::kErrorConnectionAborted;
  if (result == CURLE_OK) {
    const bool overlooked = loggedIn_ && reply_.refused();  // LIST with 450, a marked command
    return overlooked ? Internet::kErrorExtended : 0;
  }
  if (reply_.code() == kClosing) return Internet::kErrorExtended;  // for libcurl a time-out
  long systemError = 0;
  curl_easy_getinfo(easy_.get(), CURLINFO_OS_ERRNO, &systemError);
  if (isConnectionFailure(result)) return errorOfCurl(result, systemError);
  if (!loggedIn_ && reply_.code() == kNotLoggedIn) return Internet::kErrorLoginFailure;
  if (reply_.refused()) return Internet::kErrorExtended;
  const ErrorNumber error = errorOfCurl(result, systemError);
  // What libcurl cannot make out is a reply that it did not expect.
  return error == Internet::kErrorInternal && reply_.complete() ? Internet::kErrorExtended : error;
}

std::size_t FtpConnection::onReplyLine(char* line, std::size_t size, std::size_t count,
                                       void* self) {
  auto& connection = *static_cast<FtpConnection*>(self);
  connection.reply_.addLine({line, size * count});
  if (!connection.reply_.complete()) return size * count;
  connection.beginNextStep();
  // libcurl 7.88 takes a listing for done when this reply comes before the server's connection.
  if (connection.reply_.preliminary()) connection.awaitDataConnection();
  return size * count;
}

std::size_t FtpConnection::onReceived(char* data, std::size_t size, std::size_t count, void* self) {
  auto& connection = *static_cast<FtpConnection*>(self);
  connection.beginNextStep();
  const bool wanted = connection.sink_ != nullptr && !connection.sinkFailed_;
  if (wanted && !(*connection.sink_)({data, size * count})) connection.sinkFailed_ = true;
  return size * count;
}

std::size_t FtpConnection::onSend(char* buffer, std::size_t size, std::size_t count, void* self) {
  auto& connection = *static_cast<FtpConnection*>(self);
  connection.beginNextStep();
  if (connection.reader_ == nullptr) return 0;
  const auto filled = connection.reader_->read(buffer, size * count);
  connection.readFailed_ = !filled.has_value();
  return filled.value_or(CURL_READFUNC_ABORT);
}

curl_socket_t FtpConnection::onOpenSocket(void* self, curlsocktype /*purpose*/,
                                          curl_sockaddr* address) {
  auto& connection = *static_cast<FtpConnection*>(self);
  if (connection.loggedIn_ && portOf(address->addr) == connection.login_.port) {
    connection.lost_ = true;
    return CURL_SOCKET_BAD;
  }
  const int opened = socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
  const bool forServer = connection.loggedIn_ && !connection.login_.passive;
  if (forServer) connection.listener_ = opened;
  return opened;
}

}  // namespace karvel
