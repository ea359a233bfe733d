#include "platform/windows/desktop/win32_look.h"

#include <string_view>

#include "platform/windows/resource_ids.h"
#include "platform/windows/system/win32_module.h"

namespace karvel {
namespace {

UINT systemDpi() {
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return static_cast<UINT>(dpi);
}

int scaled(int value, UINT dpi) {
  return MulDiv(value, static_cast<int>(dpi), static_cast<int>(systemDpi()));
}

/// The system's font for messages, which also suits dialogs.
LOGFONTW messageFont(UINT dpi) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  const auto getForDpi = findFunction<BOOL WINAPI(UINT, UINT, PVOID, UINT, UINT)>(
      L"user32.dll", "SystemParametersInfoForDpi");
  if (getForDpi != nullptr &&
      getForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi) != FALSE) {
    return metrics.lfMessageFont;
  }
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  metrics.lfMessageFont.lfHeight =
      static_cast<LONG>(scaled(static_cast<int>(metrics.lfMessageFont.lfHeight), dpi));
  return metrics.lfMessageFont;
}

int systemMetric(int index, UINT dpi) {
  const auto getForDpi =
      findFunction<int WINAPI(int, UINT)>(L"user32.dll", "GetSystemMetricsForDpi");
  return getForDpi != nullptr ? getForDpi(index, dpi) : scaled(GetSystemMetrics(index), dpi);
}

Win32Icon loadIcon(int resource, IconSize wanted, UINT dpi) {
  const int size = systemMetric(wanted == IconSize::kSmall ? SM_CXSMICON : SM_CXICON, dpi);
  return Win32Icon(
      static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource),
                                    IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
}

/// `percent` of the front colour over the colour behind.
COLORREF blended(COLORREF front, COLORREF behind, int percent) {
  const auto mix = [percent](int above, int below) {
    return (above * percent + below * (100 - percent)) / 100;
  };
  return RGB(mix(GetRValue(front), GetRValue(behind)), mix(GetGValue(front), GetGValue(behind)),
             mix(GetBValue(front), GetBValue(behind)));
}

}  // namespace

Win32Look::Win32Look(UINT dpi) {
  LOGFONTW description = messageFont(dpi);
  font_.reset(CreateFontIndirectW(&description));
  description.lfWeight = FW_BOLD;
  titleFont_.reset(CreateFontIndirectW(&description));
}

DialogUnits Win32Look::dialogUnits(HWND window) const {
  constexpr std::wstring_view kLetters = L"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
  constexpr int kCount = static_cast<int>(kLetters.size());
  const SelectedDc dc(window, font());
  SIZE extent{};
  GetTextExtentPoint32W(dc.get(), kLetters.data(), kCount, &extent);
  TEXTMETRICW metrics{};
  GetTextMetricsW(dc.get(), &metrics);
  return {static_cast<double>(extent.cx) / kCount, static_cast<double>(metrics.tmHeight)};
}

COLORREF Win32Look::titleBand() {
  return blended(GetSysColor(COLOR_HIGHLIGHT), background(), 15);
}

COLORREF Win32Look::quietText() {
  return blended(text(), background(), 70);
}

Win32Icon trayImage(TrayImage image, IconSize size, UINT dpi) {
  return loadIcon(image == TrayImage::kFailure ? KARVEL_ICON_FAILURE : KARVEL_ICON_NORMAL, size,
                  dpi);
}

Win32Icon windowImage(IconSize size, UINT dpi) {
  return loadIcon(KARVEL_ICON_WINDOW, size, dpi);
}

UINT dpiOf(HWND window) {
  const auto getDpi = findFunction<UINT WINAPI(HWND)>(L"user32.dll", "GetDpiForWindow");
  const UINT dpi = getDpi != nullptr ? getDpi(window) : 0;
  return dpi != 0 ? dpi : systemDpi();
}

void addWindowFrame(RECT& area, DWORD style, DWORD extendedStyle, UINT dpi) {
  const auto adjustForDpi = findFunction<BOOL WINAPI(LPRECT, DWORD, BOOL, DWORD, UINT)>(
      L"user32.dll", "AdjustWindowRectExForDpi");
  if (adjustForDpi != nullptr) {
    adjustForDpi(&area, style, FALSE, extendedStyle, dpi);
  } else {
    AdjustWindowRectEx(&area, style, FALSE, extendedStyle);
  }
}

void keepDialogLayout(HWND dialog) {
  constexpr int kDisableAll = 1;
  const auto setBehaviour =
      findFunction<BOOL WINAPI(HWND, int, int)>(L"user32.dll", "SetDialogDpiChangeBehavior");
  if (setBehaviour != nullptr) setBehaviour(dialog, kDisableAll, kDisableAll);
}

}  // namespace karvel
