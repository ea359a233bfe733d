#pragma once

#include <curl/curl.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/internet.h"
#include "platform/linux/internet/ftp_reply.h"
#include "platform/linux/internet/ftp_time_watch.h"
#include "platform/linux/internet/upload_reader.h"

namespace karvel {

/// One FTP control connection with one login, carried by libcurl.
///
/// libcurl would replace a dropped connection by a new one; here that is an error instead. Every
/// operation sends just the commands that it names, blocks until its last reply or until a time
/// limit, and returns 0 or the port's error number; the reply stays readable until the next one.
/// No text may hold CR, LF or NUL.
class FtpConnection {
 public:
  using ErrorNumber = Internet::ErrorNumber;
  /// Receives the bytes of a listing; false stops it.
  using Sink = std::function<bool(std::string_view)>;

  enum class TransferType { kText, kBinary };

  struct Login {
    std::string host;  ///< as an FTP address has it
    int port = 21;
    std::string user;
    std::string password;
    bool passive = false;
  };

  FtpConnection(Login login, FtpTimeLimits limits);
  FtpConnection(const FtpConnection&) = delete;
  FtpConnection& operator=(const FtpConnection&) = delete;
  /// Says QUIT, if the connection still stands, and waits a moment for the answer.
  ~FtpConnection();

  /// Connects, then USER, PASS and libcurl's own PWD.
  ErrorNumber logIn();

  /// Sends one command line; any reply from 200 to 399 is success.
  ErrorNumber command(const std::string& line);

  /// STOR with what `reader` gives.
  ErrorNumber upload(const std::string& remoteName, UploadReader& reader, TransferType type);

  /// LIST, with an argument unless it is empty, into `sink`.
  ErrorNumber list(const std::string& argument, const Sink& sink);

  [[nodiscard]] const FtpReply& reply() const { return reply_; }

 private:
  struct MultiCleanup {
    void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
  };
  struct EasyCleanup {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
  };

  static std::size_t onReplyLine(char* line, std::size_t size, std::size_t count, void* self);
  static std::size_t onReceived(char* data, std::size_t size, std::size_t count, void* self);
  static std::size_t onSend(char* buffer, std::size_t size, std::size_t count, void* self);
  static curl_socket_t onOpenSocket(void* self, curlsocktype purpose, curl_sockaddr* address);

  void prepare(const std::string& path);
  void setAddress(const std::string& path);
  void setCallbacks();
  void setManners();
  ErrorNumber perform();
  /// Drives the exchange to its end, or to where a limit breaks it off.
  ErrorNumber run();
  /// Ends a transfer that libcurl has left before its last reply; no command may follow it.
  ErrorNumber abandon();
  /// After the first reply of an active transfer: waits for the server's connection, or for what
  /// it says instead.
  void awaitDataConnection();
  void waitForSockets(std::chrono::milliseconds time);
  void beginNextStep();
  void noticeConnect();
  [[nodiscard]] CURLcode result() const;
  [[nodiscard]] ErrorNumber errorOf(CURLcode result) const;

  const Login login_;
  const FtpTimeLimits limits_;
  // Destroyed in reverse: the handle, then the connections it used.
  std::unique_ptr<CURLM, MultiCleanup> multi_;
  std::unique_ptr<CURL, EasyCleanup> easy_;

  FtpReply reply_;
  FtpTimeWatch watch_;
  bool loggedIn_ = false;
  bool lost_ = false;  ///< libcurl wanted to connect a second time, or has lost count of replies
  curl_socket_t listener_ = CURL_SOCKET_BAD;  ///< waits for the server in an active transfer
  bool connecting_ = false;
  bool readFailed_ = false;  ///< the local file of an upload
  bool sinkFailed_ = false;
  UploadReader* reader_ = nullptr;
  const Sink* sink_ = nullptr;
};

}  // namespace karvel
