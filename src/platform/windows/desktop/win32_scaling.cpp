#include "platform/windows/desktop/win32_scaling.h"

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

}  // namespace

UINT dpiOf(HWND window) {
  const auto getDpi = findFunction<UINT WINAPI(HWND)>(L"user32.dll", "GetDpiForWindow");
  const UINT dpi = getDpi != nullptr ? getDpi(window) : 0;
  return dpi != 0 ? dpi : systemDpi();
}

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
