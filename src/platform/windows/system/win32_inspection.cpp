#include <winsock2.h>
// Windows' headers have an order.
#include <windows.h>
#include <ws2tcpip.h>
// Likewise.
#include <aclapi.h>
#include <shellapi.h>
#include <shlobj.h>

#include <algorithm>
#include <array>
#include <future>
#include <system_error>
#include <thread>
#include <type_traits>

#include "platform/inspection.h"
#include "platform/windows/system/user_instance.h"
#include "platform/windows/system/wide_text.h"
#include "platform/windows/system/win32_handle.h"
#include "text/path.h"
#include "text/strings.h"

namespace karvel {
namespace {

constexpr std::chrono::seconds kLookupLimit{10};
constexpr int kMessageText = 0xFFFF;  ///< control of a message box
constexpr UINT kTextLimit = 1000;     ///< milliseconds
constexpr const wchar_t* kRunKey = L"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr const wchar_t* kApprovedKey =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\StartupApproved\\Run";
constexpr const wchar_t* kSystemKey = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";

struct FindCloser {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const { FindClose(handle); }
};
struct LocalMemory {
  void operator()(void* block) const { LocalFree(block); }
};
struct AddressListEnd {
  void operator()(ADDRINFOW* list) const { FreeAddrInfoW(list); }
};

std::wstring programPath(const std::string& folder) {
  return toWide(joinPath(folder, "karvel.exe"));
}

bool samePath(std::wstring_view a, std::wstring_view b) {
  return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(),
                              static_cast<int>(b.size()), TRUE) == CSTR_EQUAL;
}

DateTime localTime(const FILETIME& time) {
  SYSTEMTIME universal{};
  SYSTEMTIME local{};
  if (FileTimeToSystemTime(&time, &universal) == FALSE ||
      SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local) == FALSE) {
    return {};
  }
  return {local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond};
}

/// "" when there is no such text.
std::wstring registryText(HKEY root, const wchar_t* key, const wchar_t* name) {
  std::array<wchar_t, 1024> text{};
  DWORD size = sizeof text;
  const auto status = RegGetValueW(root, key, name, RRF_RT_REG_SZ, nullptr, text.data(), &size);
  return status == ERROR_SUCCESS ? text.data() : L"";
}

/// The user can stop what the registry starts; an odd first byte says so.
bool isStoppedByUser() {
  std::array<unsigned char, 64> state{};
  DWORD size = sizeof state;
  const auto status = RegGetValueW(HKEY_CURRENT_USER, kApprovedKey, L"karvel", RRF_RT_REG_BINARY,
                                   nullptr, state.data(), &size);
  return status == ERROR_SUCCESS && (state.front() & 1U) != 0;
}

std::wstring imageOf(HWND window) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  const Win32Handle handle(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process));
  std::array<wchar_t, 1024> path{};
  DWORD length = path.size();
  if (!handle || QueryFullProcessImageNameW(handle.get(), 0, path.data(), &length) == FALSE) {
    return {};
  }
  return {path.data(), length};
}

std::string textOf(HWND control) {
  std::array<wchar_t, 1024> text{};
  DWORD_PTR length = 0;
  SendMessageTimeoutW(control, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                      SMTO_ABORTIFHUNG, kTextLimit, &length);
  return fromWide(text.data());
}

bool mayRead(ACL* rights, WELL_KNOWN_SID_TYPE who) {
  std::array<unsigned char, SECURITY_MAX_SID_SIZE> sid{};
  DWORD size = sid.size();
  if (CreateWellKnownSid(who, nullptr, sid.data(), &size) == FALSE) return false;
  TRUSTEEW trustee{};
  BuildTrusteeWithSidW(&trustee, sid.data());
  ACCESS_MASK granted = 0;
  return GetEffectiveRightsFromAclW(rights, &trustee, &granted) == ERROR_SUCCESS &&
         (granted & FILE_READ_DATA) != 0;
}

std::vector<std::string> addressesOf(const std::string& host) {
  WSADATA library{};
  if (WSAStartup(MAKEWORD(2, 2), &library) != 0) return {};
  ADDRINFOW hints{};
  hints.ai_socktype = SOCK_STREAM;
  ADDRINFOW* found = nullptr;
  std::vector<std::string> addresses;
  if (!host.empty() && GetAddrInfoW(toWide(host).c_str(), nullptr, &hints, &found) == 0) {
    const std::unique_ptr<ADDRINFOW, AddressListEnd> list(found);
    for (; found != nullptr; found = found->ai_next) {
      std::array<wchar_t, NI_MAXHOST> digits{};
      const bool told = GetNameInfoW(found->ai_addr, static_cast<socklen_t>(found->ai_addrlen),
                                     digits.data(), digits.size(), nullptr, 0, NI_NUMERICHOST) == 0;
      if (told) addresses.push_back(fromWide(digits.data()));
    }
  }
  WSACleanup();
  return addresses;
}

std::string folderOf(int kind) {
  std::array<wchar_t, MAX_PATH> path{};
  return SUCCEEDED(SHGetFolderPathW(nullptr, kind, nullptr, 0, path.data())) ? fromWide(path.data())
                                                                             : std::string();
}

class Win32Inspection final : public Inspection {
 public:
  std::vector<Entry> entries(const std::string& folder) override {
    std::vector<Entry> found;
    WIN32_FIND_DATAW data{};
    HANDLE handle = FindFirstFileW(toWide(joinPath(folder, "*")).c_str(), &data);
    if (handle == INVALID_HANDLE_VALUE) return found;
    const std::unique_ptr<HANDLE, FindCloser> find(handle);
    do {
      const std::string name = fromWide(data.cFileName);
      const bool isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
      if (name != "." && name != "..") {
        found.push_back({name, isFolder, localTime(data.ftLastWriteTime)});
      }
    } while (FindNextFileW(handle, &data) != FALSE);
    std::sort(found.begin(), found.end(),
              [](const Entry& a, const Entry& b) { return a.name < b.name; });
    return found;
  }

  std::optional<std::uint64_t> freeBytes(const std::string& folder) override {
    ULARGE_INTEGER available{};
    if (GetDiskFreeSpaceExW(toWide(folder).c_str(), &available, nullptr, nullptr) == FALSE) {
      return std::nullopt;
    }
    return available.QuadPart;
  }

  bool writable(const std::string& folder) override {
    HANDLE handle = CreateFileW(toWide(folder).c_str(), FILE_ADD_FILE,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return false;
    CloseHandle(handle);
    return true;
  }

  std::optional<bool> readableByOthers(const std::string& file) override {
    std::wstring path = toWide(file);
    ACL* rights = nullptr;
    void* descriptor = nullptr;
    if (GetNamedSecurityInfoW(path.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                              nullptr, &rights, nullptr, &descriptor) != ERROR_SUCCESS) {
      return std::nullopt;
    }
    const std::unique_ptr<void, LocalMemory> owner(descriptor);
    if (rights == nullptr) return true;  // no list: everybody may do everything
    return mayRead(rights, WinBuiltinUsersSid) || mayRead(rights, WinAuthenticatedUserSid) ||
           mayRead(rights, WinWorldSid);
  }

  bool running(const std::string& programFolder) override {
    return UserInstance::held(programFolder);
  }

  std::string waitingMessage(const std::string& programFolder) override {
    const std::wstring program = programPath(programFolder);
    HWND box = nullptr;
    while ((box = FindWindowExW(nullptr, box, L"#32770", nullptr)) != nullptr) {
      HWND text = GetDlgItem(box, kMessageText);
      if (text != nullptr && samePath(imageOf(box), program)) return textOf(text);
    }
    return {};
  }

  std::optional<bool> startsAtSignIn(const std::string& programFolder) override {
    const std::wstring command = registryText(HKEY_CURRENT_USER, kRunKey, L"karvel");
    const std::wstring program = programPath(programFolder);
    const bool named = samePath(command, L'"' + program + L'"') || samePath(command, program);
    return named && !isStoppedByUser();
  }

  std::vector<std::string> addresses(const std::string& host) override {
    std::packaged_task<std::vector<std::string>()> task([host] { return addressesOf(host); });
    auto found = task.get_future();
    try {
      std::thread(std::move(task)).detach();
    } catch (const std::system_error&) {
      return {};  // no thread to be had
    }
    return found.wait_for(kLookupLimit) == std::future_status::ready ? found.get()
                                                                     : std::vector<std::string>();
  }

  std::optional<unsigned> codePage() override { return GetACP(); }

  std::string systemName() override {
    return fromWide(registryText(HKEY_LOCAL_MACHINE, kSystemKey, L"ProductName") + L" " +
                    registryText(HKEY_LOCAL_MACHINE, kSystemKey, L"CurrentBuild"));
  }

  std::chrono::milliseconds elapsed() override {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
  }

  std::string temporaryFolder() override {
    std::array<wchar_t, MAX_PATH + 1> path{};
    std::string folder = fromWide({path.data(), GetTempPathW(path.size(), path.data())});
    if (folder.ends_with(kSeparator)) folder.pop_back();
    return folder;
  }

  std::string documentsFolder() override { return folderOf(CSIDL_PERSONAL); }

  bool openForUser(const std::string& path) override {
    constexpr INT_PTR kHighestError = 32;
    return reinterpret_cast<INT_PTR>(ShellExecuteW(nullptr, L"open", toWide(path).c_str(), nullptr,
                                                   nullptr, SW_SHOWNORMAL)) > kHighestError;
  }

  void print(const std::string& utf8) override {
    HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    DWORD count = 0;
    if (GetConsoleMode(output, &mode) != FALSE) {
      const std::wstring text = toWide(utf8);
      WriteConsoleW(output, text.data(), static_cast<DWORD>(text.size()), &count, nullptr);
    } else {
      WriteFile(output, utf8.data(), static_cast<DWORD>(utf8.size()), &count, nullptr);
    }
  }

  /// Not those of the C library, which have the system's code page. A program that was started by
  /// a click has a console of its own, which goes at its end: its result is opened as a page.
  std::vector<std::string> arguments(int, char**) override {
    int count = 0;
    const std::unique_ptr<LPWSTR, LocalMemory> all(CommandLineToArgvW(GetCommandLineW(), &count));
    std::vector<std::string> texts;
    for (int i = 1; all && i < count; ++i) texts.push_back(fromWide(all.get()[i]));
    DWORD process = 0;
    if (texts.empty() && GetConsoleProcessList(&process, 1) == 1) texts.emplace_back("--open");
    return texts;
  }
};

}  // namespace

std::unique_ptr<Inspection> makeInspection() {
  return std::make_unique<Win32Inspection>();
}

}  // namespace karvel
