#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "text/date_time.h"

namespace karvel {

/// The FTP functions of the platform's internet library.
///
/// Host and account are bytes of code page 932; remote names, folders and replies are the server's
/// bytes, whatever they stand for; local paths are UTF-8. A text with CR, LF or NUL never reaches
/// the server: the call fails with kErrorInvalidParameter.
///
/// Every call blocks until the server exchange is over, within bounded time: a connect and each
/// answer of the server within 10 seconds, a transfer's progress within 30, a call as a whole
/// within 60, an upload within one second more for every 10 kB. A server that keeps none of these
/// is given up with kErrorTimeout.
///
/// A call that fails returns 0, false or empty and leaves the reason in lastError(). The session
/// goes on after a refusal of the server and after a data connection that was refused
/// (kErrorCannotConnect). What has ended it is the reason of every later call, too.
class Internet {
 public:
  using Handle = std::uintptr_t;  ///< 0 is no handle
  using ErrorNumber = std::uint32_t;

  static constexpr std::uint32_t kOptionConnectTimeout = 2;
  static constexpr std::uint32_t kOptionReceiveTimeout = 6;

  static constexpr std::uint32_t kFlagAsync = 0x10000000;    ///< no effect on a synchronous handle
  static constexpr std::uint32_t kFlagPassive = 0x08000000;  ///< PASV/EPSV; without it PORT/EPRT

  static constexpr std::uint32_t kTransferAscii = 1;   ///< each line end is CR LF on the wire
  static constexpr std::uint32_t kTransferBinary = 2;  ///< the bytes unchanged

  // Error numbers. Any other reply that is no success is kErrorExtended.
  static constexpr ErrorNumber kErrorFileNotFound = 2;  ///< the local file cannot be read
  static constexpr ErrorNumber kErrorInvalidHandle = 6;
  static constexpr ErrorNumber kErrorNoMoreFiles = 18;
  static constexpr ErrorNumber kErrorInvalidParameter = 87;
  static constexpr ErrorNumber kErrorTimeout = 12002;
  static constexpr ErrorNumber kErrorExtended = 12003;
  static constexpr ErrorNumber kErrorInternal = 12004;
  static constexpr ErrorNumber kErrorNameNotResolved = 12007;
  static constexpr ErrorNumber kErrorLoginFailure = 12015;
  static constexpr ErrorNumber kErrorCannotConnect = 12029;
  static constexpr ErrorNumber kErrorConnectionAborted = 12030;
  static constexpr ErrorNumber kErrorConnectionReset = 12031;

  /// One entry of a remote folder, as the server lists it.
  struct FindData {
    std::string name;  ///< without path
    bool folder = false;
    std::uint64_t size = 0;  ///< bytes
    DateTime time;           ///< of the last write, in no particular time zone
  };

  struct Account {
    std::optional<std::string> host;
    int port = 21;
    std::optional<std::string> user;
    std::optional<std::string> password;
  };

  virtual ~Internet() = default;

  /// Opens the library for direct access, synchronously.
  [[nodiscard]] virtual Handle open() = 0;

  /// Sets a time-out in milliseconds on the root handle, for the sessions that it connects later.
  virtual bool setOption(Handle root, std::uint32_t option, std::uint32_t milliseconds) = 0;

  /// Connects and logs in; without a user as "anonymous", where a password is an error
  /// (kErrorInvalidParameter). One session is one control connection with one login: one that the
  /// server drops is reported by the next call and never replaced by a new login.
  [[nodiscard]] virtual Handle connect(Handle root, const Account& account,
                                       std::uint32_t flags) = 0;

  /// Closes a root, session or enumeration handle; a session says QUIT to the server. When it
  /// fails, the handle stays as it was.
  [[nodiscard]] virtual bool close(Handle handle) = 0;

  /// The session's current folder as the server tells it.
  [[nodiscard]] virtual std::optional<std::string> currentDirectory(Handle session) = 0;
  /// Changes the session's current folder, which stays the same when this fails.
  [[nodiscard]] virtual bool setCurrentDirectory(Handle session, const std::string& folder) = 0;

  /// Uploads a local file into the current folder and replaces what has that name there. When it
  /// fails, the server may be left with a part of the file.
  [[nodiscard]] virtual bool putFile(Handle session, const std::string& localPath,
                                     const std::string& remoteName, std::uint32_t transferType) = 0;
  /// Renames a file of the current folder; whether an existing one is replaced is the server's
  /// decision.
  [[nodiscard]] virtual bool renameFile(Handle session, const std::string& from,
                                        const std::string& to) = 0;
  /// Deletes a file of the current folder.
  [[nodiscard]] virtual bool deleteFile(Handle session, const std::string& remoteName) = 0;

  /// Starts an enumeration of the current folder and gives its first entry; an empty folder fails
  /// with kErrorNoMoreFiles, a listing in no known format with another number. One enumeration per
  /// session; while it is open other calls are fine.
  [[nodiscard]] virtual Handle findFirst(Handle session, const std::string& pattern,
                                         FindData& entry) = 0;
  /// The next entry; after the last one fails with kErrorNoMoreFiles. A call that fails leaves
  /// `entry` as it was.
  [[nodiscard]] virtual bool findNext(Handle find, FindData& entry) = 0;

  /// The reason of the last failed call.
  [[nodiscard]] virtual ErrorNumber lastError() = 0;

  /// The server's last response text, and the number that goes with it.
  struct Response {
    ErrorNumber number = 0;
    std::string text;
  };
  [[nodiscard]] virtual Response lastResponse() = 0;

  /// What the server said during the last call with a session, each reply in lines of its own: all
  /// of it, or as much as the library keeps.
  [[nodiscard]] virtual std::string lastReplies() = 0;

  /// What the server says that it can do (FEAT); empty when it does not say.
  [[nodiscard]] virtual std::optional<std::string> features(Handle session) = 0;

  /// The operating system's text of an error number, at most 255 characters of UTF-8 text in one
  /// line; empty when there is none.
  [[nodiscard]] virtual std::string systemMessage(ErrorNumber number) = 0;
};

}  // namespace karvel
