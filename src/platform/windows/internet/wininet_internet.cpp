#include "platform/windows/internet/wininet_internet.h"

#include <wininet.h>

#include <array>
#include <initializer_list>

#include "platform/windows/system/ansi_path.h"
#include "platform/windows/system/wide_text.h"
#include "text/server_text.h"
#include "text/strings.h"

namespace karvel {
namespace {

constexpr DWORD_PTR kContext = 1;
constexpr DWORD_PTR kFindContext = 0;
constexpr DWORD kTransferLimits = 3;           ///< limits of an answer that a transfer may pause
constexpr std::size_t kLongestResponse = 255;  ///< bytes

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

/// The library takes the lower half of a port's number, and an empty name for this machine.
bool reachable(const Internet::Account& account) {
  if (account.port < 0 || account.port > 0xFFFF) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
  }
  if (trimmed(account.host.value_or("")).empty()) {
    SetLastError(ERROR_INTERNET_NAME_NOT_RESOLVED);
    return false;
  }
  return true;
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
    setNumber(native(root), INTERNET_OPTION_CONTROL_SEND_TIMEOUT, milliseconds);
    setNumber(native(root), INTERNET_OPTION_DATA_SEND_TIMEOUT, kTransferLimits * milliseconds);
    setNumber(native(root), INTERNET_OPTION_DATA_RECEIVE_TIMEOUT, kTransferLimits * milliseconds);
  }
  return note(setNumber(native(root), option, milliseconds));
}

Internet::Handle WininetInternet::connect(Handle root, const Account& account,
                                          std::uint32_t flags) {
  HINTERNET session = nullptr;
  if (sendable(
          {account.host.value_or(""), account.user.value_or(""), account.password.value_or("")}) &&
      reachable(account)) {
    session =
        InternetConnectA(native(root), textOrAbsent(account.host),
                         static_cast<INTERNET_PORT>(account.port), textOrAbsent(account.user),
                         textOrAbsent(account.password), INTERNET_SERVICE_FTP, flags, kContext);
  }
  note(session != nullptr);
  return portable(session);
}

bool WininetInternet::close(Handle handle) {
  return note(InternetCloseHandle(native(handle)) != FALSE);
}

std::optional<std::string> WininetInternet::currentDirectory(Handle session) {
  std::array<char, 261> buffer{};
  DWORD length = buffer.size() - 1;
  if (!note(FtpGetCurrentDirectoryA(native(session), buffer.data(), &length) != FALSE)) {
    return std::nullopt;
  }
  return std::string(buffer.data());
}

bool WininetInternet::setCurrentDirectory(Handle session, const std::string& folder) {
  return note(sendable({folder}) &&
              FtpSetCurrentDirectoryA(native(session), folder.c_str()) != FALSE);
}

bool WininetInternet::putFile(Handle session, const std::string& localPath,
                              const std::string& remoteName, std::uint32_t transferType) {
  return note(sendable({remoteName}) &&
              FtpPutFileA(native(session), ansiPath(localPath).c_str(), remoteName.c_str(),
                          transferType, kContext) != FALSE);
}

bool WininetInternet::renameFile(Handle session, const std::string& from, const std::string& to) {
  return note(sendable({from, to}) &&
              FtpRenameFileA(native(session), from.c_str(), to.c_str()) != FALSE);
}

bool WininetInternet::deleteFile(Handle session, const std::string& remoteName) {
  return note(sendable({remoteName}) &&
              FtpDeleteFileA(native(session), remoteName.c_str()) != FALSE);
}

Internet::Handle WininetInternet::findFirst(Handle session, const std::string& pattern,
                                            FindData& entry) {
  WIN32_FIND_DATAA found{};
  HINTERNET find = nullptr;
  if (sendable({pattern})) {
    find = FtpFindFirstFileA(native(session), pattern.c_str(), &found, 0, kFindContext);
  }
  if (note(find != nullptr)) entry = findDataOf(found);
  return portable(find);
}

bool WininetInternet::findNext(Handle find, FindData& entry) {
  WIN32_FIND_DATAA found{};
  if (!note(InternetFindNextFileA(native(find), &found) != FALSE)) return false;
  entry = findDataOf(found);
  return true;
}

Internet::Response WininetInternet::lastResponse() {
  std::string buffer(kLongestResponse + 1, '\0');
  auto length = static_cast<DWORD>(buffer.size());
  DWORD number = 0;
  // A text that does not fit is not given at all, only its length.
  if (InternetGetLastResponseInfoA(&number, buffer.data(), &length) == FALSE &&
      GetLastError() == ERROR_INSUFFICIENT_BUFFER) {
    buffer.assign(length + std::size_t{1}, '\0');
    length = static_cast<DWORD>(buffer.size());
    InternetGetLastResponseInfoA(&number, buffer.data(), &length);
  }
  const std::string text = codePage932OfServerText(buffer.c_str());
  return {number, std::string(cutBytes932(text, kLongestResponse))};
}

std::string WininetInternet::systemMessage(ErrorNumber number) {
  constexpr DWORD kFlags =
      FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
  constexpr DWORD kLanguage = MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT);
  std::array<char, 256> buffer{};
  const DWORD count =
      FormatMessageA(kFlags, nullptr, number, kLanguage, buffer.data(), buffer.size() - 1, nullptr);
  return fromAnsi({buffer.data(), count});
}

bool WininetInternet::note(bool succeeded) {
  if (!succeeded) lastError_ = GetLastError();
  return succeeded;
}

}  // namespace karvel
