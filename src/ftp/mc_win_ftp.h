#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "ftp/server_names.h"
#include "platform/internet.h"
#include "text/date_time.h"

namespace karvel {

/// One entry of a remote folder.
struct FTPFile {
  static constexpr std::int32_t kFolder = 16;

  std::string FileName;       ///< as the server lists it, without path
  double FileSize = 0;        ///< bytes
  DateTime FileDate;          ///< last write time
  std::int32_t FileType = 0;  ///< kFolder, or 0 for anything else
  bool SearchEnd = false;     ///< the enumeration has no current entry: it has ended or failed
};

/// One FTP session over the platform's internet library: account data, one login, folder changes,
/// transfers, and the enumeration of a folder into RemoteFile. All texts are UTF-8; a name that has
/// been enumerated goes back to the server as the server wrote it.
///
/// Nothing is thrown and nothing shown: every failure of the library becomes a Japanese text and
/// is announced through FTPFrr before the failing operation returns. A result of 0 is a failure.
class McWinFTP {
 public:
  using FailureHandler = std::function<void(std::int32_t ErrNumber, const std::string& ErrString)>;

  /// Opens the library, with 10 seconds as the limit of a connect and of an answer.
  McWinFTP(Internet& internet, FailureHandler FTPFrr);
  ~McWinFTP();
  McWinFTP(const McWinFTP&) = delete;
  McWinFTP& operator=(const McWinFTP&) = delete;

  std::unique_ptr<FTPFile> RemoteFile = std::make_unique<FTPFile>();

  /// The session's handle; 0 while no session is open.
  [[nodiscard]] Internet::Handle hFTP() const { return hFTP_; }

  // Account data. An empty text is handed to the library as absent.
  void RemoteHost(const std::string& szRemoteHost) { remoteHost_ = szRemoteHost; }
  [[nodiscard]] const std::string& RemoteHost() const { return remoteHost_; }
  void User(const std::string& szUser) { user_ = szUser; }
  [[nodiscard]] const std::string& User() const { return user_; }
  void Password(const std::string& szPassword) { password_ = szPassword; }
  [[nodiscard]] const std::string& Password() const { return password_; }

  void PassiveFlag(bool bPassive);
  [[nodiscard]] bool PassiveFlag() const;

  /// A port outside 21 to 60000 counts as 21.
  void Inet_FtpPort(std::int32_t bFtpPort);
  [[nodiscard]] std::int32_t Inet_FtpPort() const;

  /// The server's current folder; "" when it cannot be told.
  [[nodiscard]] std::string CurDir();
  /// Changes the current folder. One leading "/" or "\" is taken off: the path is relative.
  void CurDir(const std::string& szDir);

  /// Connects and logs in; success is seen in hFTP(). Without the library it has no effect, as its
  /// failure has been announced.
  void OpenSession();
  /// Ends the enumeration and the session.
  void CloseSession();

  /// Uploads a local file; `nTransfer` 1 is text, anything else binary.
  std::int32_t PutFile(const std::string& szLocalFile, const std::string& szRemoteFile,
                       std::int32_t nTransfer = 0);
  std::int32_t RenameFile(const std::string& szExistFile, const std::string& szNewFile);
  std::int32_t DeleteFile(const std::string& szRemoteFile);

  /// Starts an enumeration of the current folder and loads its first entry.
  void FindFile(const std::string& szSearchString);
  /// Loads the next entry; without effect after the last one.
  void NextFile();

 private:
  void CloseFind();
  void StoreFindData(const Internet::FindData& entry);
  void ReportError(Internet::ErrorNumber number);
  void endSearch(Internet::ErrorNumber number);
  std::int32_t reported(bool done);

  Internet& internet_;
  FailureHandler FTPFrr_;
  Internet::Handle hInternet_ = 0;
  Internet::Handle hFTP_ = 0;
  Internet::Handle hFind_ = 0;
  ServerNames names_;
  std::int32_t port_ = 21;
  std::uint32_t connectFlags_ = 0;
  std::string remoteHost_;
  std::string user_;
  std::string password_;
};

}  // namespace karvel
