#include "selftest/windows/machine_facts.h"

#include <windows.h>

#include <array>
#include <cstdio>
#include <cstdlib>

#include "platform/windows/system/wide_text.h"
#include "platform/windows/system/win32_handle.h"

namespace karvel {
namespace {

constexpr const wchar_t* kSystemKey = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
constexpr int kPercent = 100;
constexpr int kUsualDpi = 96;

std::string registryText(const wchar_t* name) {
  std::array<wchar_t, 256> text{};
  DWORD size = sizeof text;
  RegGetValueW(HKEY_LOCAL_MACHINE, kSystemKey, name, RRF_RT_REG_SZ, nullptr, text.data(), &size);
  return fromWide(text.data());
}

std::string registryNumber(const wchar_t* name) {
  DWORD number = 0;
  DWORD size = sizeof number;
  RegGetValueW(HKEY_LOCAL_MACHINE, kSystemKey, name, RRF_RT_REG_DWORD, nullptr, &number, &size);
  return std::to_string(number);
}

std::string windowsVersion() {
  return registryText(L"ProductName") + " " + registryText(L"DisplayVersion") + " (ビルド " +
         registryText(L"CurrentBuild") + "." + registryNumber(L"UBR") + ")";
}

using LocaleName = std::array<wchar_t, LOCALE_NAME_MAX_LENGTH>;

std::string locales() {
  LocaleName user{};
  LocaleName system{};
  GetUserDefaultLocaleName(user.data(), user.size());
  GetSystemDefaultLocaleName(system.data(), system.size());
  LocaleName shown{};
  LCIDToLocaleName(GetUserDefaultUILanguage(), shown.data(), shown.size(), 0);
  return "ユーザー " + fromWide(user.data()) + "、システム " + fromWide(system.data()) +
         "、表示言語 " + fromWide(shown.data());
}

std::string percentOf(int dpi) {
  return std::to_string(dpi) + " dpi (" + std::to_string(dpi * kPercent / kUsualDpi) + "%)";
}

std::string usualScaling() {
  HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return percentOf(dpi);
}

BOOL CALLBACK addMonitor(HMONITOR monitor, HDC, RECT* area, LPARAM list) {
  // Windows 7 has no such function.
  using GetDpi = HRESULT(WINAPI*)(HMONITOR, int, UINT*, UINT*);
  static const HMODULE library = LoadLibraryW(L"shcore.dll");
  static const auto getDpi = library == nullptr ? nullptr
                                                : reinterpret_cast<GetDpi>(reinterpret_cast<void*>(
                                                      GetProcAddress(library, "GetDpiForMonitor")));
  auto& text = *reinterpret_cast<std::string*>(list);
  if (!text.empty()) text += "、";
  text += std::to_string(area->right - area->left) + "×" + std::to_string(area->bottom - area->top);
  UINT dpi = 0;
  UINT unused = 0;
  if (getDpi != nullptr && SUCCEEDED(getDpi(monitor, 0, &dpi, &unused))) {
    text += " " + percentOf(static_cast<int>(dpi));
  }
  return TRUE;
}

std::string monitors() {
  std::string text;
  EnumDisplayMonitors(nullptr, nullptr, &addMonitor, reinterpret_cast<LPARAM>(&text));
  return text.empty() ? "なし" : text;
}

std::string rights() {
  HANDLE handle = nullptr;
  OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &handle);
  const Win32Handle token(handle);
  TOKEN_ELEVATION elevation{};
  DWORD size = 0;
  GetTokenInformation(token.get(), TokenElevation, &elevation, sizeof elevation, &size);
  return elevation.TokenIsElevated != 0 ? "管理者として実行" : "標準(管理者としてではない)";
}

std::string now() {
  SYSTEMTIME time{};
  GetLocalTime(&time);
  TIME_ZONE_INFORMATION zone{};
  const DWORD kind = GetTimeZoneInformation(&zone);
  const LONG daylight = kind == TIME_ZONE_ID_DAYLIGHT ? zone.DaylightBias : zone.StandardBias;
  const LONG east = -(zone.Bias + daylight);  // minutes
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%04d/%02d/%02d %02d:%02d (UTC%c%02ld:%02ld)", time.wYear,
                time.wMonth, time.wDay, time.wHour, time.wMinute, east < 0 ? '-' : '+',
                std::labs(east) / 60, std::labs(east) % 60);
  return text.data();
}

}  // namespace

std::vector<std::pair<std::string, std::string>> machineFacts() {
  return {
      {"日時", now()},
      {"Windows", windowsVersion()},
      {"ANSIコードページ", std::to_string(GetACP()) + " (OEM " + std::to_string(GetOEMCP()) + ")"},
      {"言語", locales()},
      {"拡大率", usualScaling()},
      {"画面", monitors()},
      {"権限", rights()},
  };
}

}  // namespace karvel
