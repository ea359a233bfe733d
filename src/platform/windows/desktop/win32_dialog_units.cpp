#include "platform/windows/desktop/win32_dialog_units.h"

#include <cmath>
#include <string_view>

#include "platform/windows/desktop/win32_gdi.h"

namespace karvel {

Win32DialogUnits::Win32DialogUnits(HWND window, HFONT font) {
  constexpr std::wstring_view kLetters = L"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
  constexpr int kCount = static_cast<int>(kLetters.size());
  const SelectedDc dc(window, font);
  SIZE extent{};
  GetTextExtentPoint32W(dc.get(), kLetters.data(), kCount, &extent);
  TEXTMETRICW metrics{};
  GetTextMetricsW(dc.get(), &metrics);
  horizontalBase_ = static_cast<double>(extent.cx) / kCount;
  verticalBase_ = metrics.tmHeight;
}

int Win32DialogUnits::horizontal(int units) const {
  return static_cast<int>(std::lround(units * horizontalBase_ / 4));
}

int Win32DialogUnits::vertical(int units) const {
  return static_cast<int>(std::lround(units * verticalBase_ / 8));
}

RECT Win32DialogUnits::rect(const Rect& units) const {
  return {horizontal(units.x), vertical(units.y), horizontal(units.x + units.width),
          vertical(units.y + units.height)};
}

}  // namespace karvel
