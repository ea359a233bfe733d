#include "platform/windows/internet/wininet_internet.h"

#include <wininet.h>

#include <array>
#include <initializer_list>

#include "platform/windows/internet/call_limit.h"
#include "platform/windows/system/ansi_path.h"
#include "platform/windows/system/wide_text.h"
#include "text/strings.h"

namespace karvel {
namespace {

constexpr DWORD_PTR kContext = 1;
constexpr DWORD_PTR kFindContext = 0;
constexpr std::size_t kUsualResponse = 255;  ///< bytes

HINTERNET native(Internet::Handle handle) {
  return reinterpret_cast<HINTERNET>(handle);
}

Internet::Handle portable(HINTERNET handle) {
  return reinterpret_cast<Internet::Handle>(handle);
}

const char* textOrAbsent(const std::optional<std::string>& text) {
  return text ? text->c_str() : nullptr;
}

/// The library would pass a line end on to the server as the end of its command, and take a NUL as
/// the end of the text.
bool breaksCommand(const std::string& text) {
  return text.find_first_of({"\r\n\0", 3}) != std::string::npos;
}

bool sendable(std::initializer_list<std::string> texts) {
  for (const std::string& text : texts) {
    if (!breaksCommand(text)) continue;
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
  }
  return true;
}

/// The library takes the lower half of a port's number, an empty name for this machine, and a
/// password without a user for an anonymous user's.
bool reachable(const Internet::Account& account) {
  const bool hasStrayPassword = account.password && !account.user;
  if (account.port < 0 || account.port > 0xFFFF || hasStrayPassword) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
  }
  if (trimmed(account.host.value_or("")).empty()) {
    SetLastError(ERROR_INTERNET_NAME_NOT_RESOLVED);
    return false;
  }
  return true;
}

std::uint64_t fileSize(const std::string& path) {
  constexpr unsigned kHalf = 32;
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (GetFileAttributesExW(toWide(path).c_str(), GetFileExInfoStandard, &data) == FALSE) return 0;
  return (std::uint64_t{data.nFileSizeHigh} << kHalf) | data.nFileSizeLow;
}

bool setNumber(HINTERNET root, DWORD option, DWORD value) {
  return InternetSetOptionA(root, option, &value, sizeof value) != FALSE;
}

DateTime calendarTime(const FILETIME& time) {
  SYSTEMTIME calendar{};
  if (FileTimeToSystemTime(&time, &calendar) == FALSE) return {};
  return {calendar.wYear, calendar.wMonth,  calendar.wDay,
          calendar.wHour, calendar.wMinute, calendar.wSecond};
}

}  // namespace

Internet::FindData findDataOf(const WIN32_FIND_DATAA& found) {
  constexpr unsigned kHalf = 32;
  return {std::string(found.cFileName, strnlen(found.cFileName, sizeof found.cFileName)),
          found.dwFileAttributes == FILE_ATTRIBUTE_DIRECTORY,
          (std::uint64_t{found.nFileSizeHigh} << kHalf) | found.nFileSizeLow,
          calendarTime(found.ftLastWriteTime)};
}

Internet::Handle WininetInternet::open() {
  const HINTERNET root = InternetOpenA(nullptr, INTERNET_OPEN_TYPE_DIRECT, nullptr, nullptr, 0);
  // By itself the library tries five times, each as long as the time limit.
  if (note(root != nullptr)) setNumber(root, INTERNET_OPTION_CONNECT_RETRIES, 1);
  return portable(root);
}

bool WininetInternet::setOption(Handle root, std::uint32_t option, std::uint32_t milliseconds) {
  if (option == kOptionReceiveTimeout) {
    limits_.answer = std::chrono::milliseconds(milliseconds);
    const auto silence = static_cast<DWORD>(limits_.silence().count());
    setNumber(native(root), INTERNET_OPTION_CONTROL_SEND_TIMEOUT, milliseconds);
    setNumber(native(root), INTERNET_OPTION_DATA_SEND_TIMEOUT, silence);
    setNumber(native(root), INTERNET_OPTION_DATA_RECEIVE_TIMEOUT, silence);
  }
  return note(setNumber(native(root), option, milliseconds));
}

Internet::Handle WininetInternet::connect(Handle root, const Account& account,
                                          std::uint32_t flags) {
  const bool sent = sendable({account.host.value_or(""), account.user.value_or(""),
                              account.password.value_or("")}) &&
                    reachable(account);
  HINTERNET session = nullptr;
  const bool connected =
      sent && call(root, limits_.exchange(), [&] {
        session =
            InternetConnectA(native(root), textOrAbsent(account.host),
                             static_cast<INTERNET_PORT>(account.port), textOrAbsent(account.user),
                             textOrAbsent(account.password), INTERNET_SERVICE_FTP, flags, kContext);
        return session != nullptr;
      });
  return note(connected) ? portable(session) : 0;
}

bool WininetInternet::close(Handle handle) {
  const auto session = enumerations_.find(handle);
  const bool wentBefore = brokenOff_.erase(handle) != 0 ||
                          (session != enumerations_.end() && brokenOff_.contains(session->second));
  enumerations_.erase(handle);
  return wentBefore || note(InternetCloseHandle(native(handle)) != FALSE);
}

std::optional<std::string> WininetInternet::currentDirectory(Handle session) {
  std::array<char, 261> buffer{};
  DWORD length = buffer.size() - 1;
  const bool told = call(session, limits_.exchange(), [&] {
    return FtpGetCurrentDirectoryA(native(session), buffer.data(), &length) != FALSE;
  });
  if (!note(told)) return std::nullopt;
  return std::string(buffer.data());
}

bool WininetInternet::setCurrentDirectory(Handle session, const std::string& folder) {
  return note(sendable({folder}) && call(session, limits_.exchange(), [&] {
                return FtpSetCurrentDirectoryA(native(session), folder.c_str()) != FALSE;
              }));
}

bool WininetInternet::putFile(Handle session, const std::string& localPath,
                              const std::string& remoteName, std::uint32_t transferType) {
  const AnsiPath path(localPath);
  return note(sendable({remoteName}) && call(session, limits_.upload(fileSize(localPath)), [&] {
                return FtpPutFileA(native(session), path.bytes(), remoteName.c_str(), transferType,
                                   kContext) != FALSE;
              }));
}

bool WininetInternet::renameFile(Handle session, const std::string& from, const std::string& to) {
  return note(sendable({from, to}) && call(session, limits_.exchange(), [&] {
                return FtpRenameFileA(native(session), from.c_str(), to.c_str()) != FALSE;
              }));
}

bool WininetInternet::deleteFile(Handle session, const std::string& remoteName) {
  return note(sendable({remoteName}) && call(session, limits_.exchange(), [&] {
                return FtpDeleteFileA(native(session), remoteName.c_str()) != FALSE;
              }));
}

Internet::Handle WininetInternet::findFirst(Handle session, const std::string& pattern,
                                            FindData& entry) {
  WIN32_FIND_DATAA found{};
  HINTERNET find = nullptr;
  const bool listed =
      sendable({pattern}) && call(session, limits_.exchange(), [&] {
        find = FtpFindFirstFileA(native(session), pattern.c_str(), &found, 0, kFindContext);
        return find != nullptr;
      });
  if (!note(listed)) return 0;
  entry = findDataOf(found);
  enumerations_[portable(find)] = session;
  return portable(find);
}

bool WininetInternet::findNext(Handle find, FindData& entry) {
  WIN32_FIND_DATAA found{};
  if (!note(InternetFindNextFileA(native(find), &found) != FALSE)) return false;
  entry = findDataOf(found);
  return true;
}

Internet::Response WininetInternet::lastResponse() {
  std::string buffer(kUsualResponse + 1, '\0');
  auto length = static_cast<DWORD>(buffer.size());
  DWORD number = 0;
  // A text that does not fit is not given at all, only its length.
  if (InternetGetLastResponseInfoA(&number, buffer.data(), &length) == FALSE &&
      GetLastError() == ERROR_INSUFFICIENT_BUFFER) {
    buffer.assign(length + std::size_t{1}, '\0');
    length = static_cast<DWORD>(buffer.size());
    InternetGetLastResponseInfoA(&number, buffer.data(), &length);
  }
  return {number, buffer.c_str()};
}

std::optional<std::string> WininetInternet::features(Handle session) {
  const bool told = call(session, limits_.exchange(), [&] {
    return FtpCommandA(native(session), FALSE, FTP_TRANSFER_TYPE_ASCII, "FEAT", 0, nullptr) !=
           FALSE;
  });
  if (!note(told)) return std::nullopt;
  return lastResponse().text;
}

std::string WininetInternet::systemMessage(ErrorNumber number) {
  constexpr DWORD kFlags =
      FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
  constexpr DWORD kLanguage = MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT);
  // Not FormatMessageA: the text may be in a language that the system's code page lacks.
  std::array<wchar_t, 256> buffer{};
  const DWORD count =
      FormatMessageW(kFlags, nullptr, number, kLanguage, buffer.data(), buffer.size() - 1, nullptr);
  return fromWide({buffer.data(), count});
}

bool WininetInternet::call(Handle handle, std::chrono::milliseconds limit,
                           const std::function<bool()>& function) {
  bool inTime = !brokenOff_.contains(handle);
  bool succeeded = false;
  DWORD error = 0;
  if (inTime) {
    CallLimit watch(native(handle), limit);
    succeeded = function();
    error = GetLastError();
    inTime = !watch.end();
  }
  if (!inTime) brokenOff_.insert(handle);
  SetLastError(inTime ? error : ERROR_INTERNET_TIMEOUT);
  return succeeded && inTime;
}

bool WininetInternet::note(bool succeeded) {
  if (!succeeded) lastError_ = GetLastError();
  return succeeded;
}

}  // namespace karvel
