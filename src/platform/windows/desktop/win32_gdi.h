#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

namespace karvel {

struct GdiDeleter {
  void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
struct IconDeleter {
  void operator()(HICON icon) const { DestroyIcon(icon); }
};

using Win32Font = std::unique_ptr<std::remove_pointer_t<HFONT>, GdiDeleter>;
using Win32Icon = std::unique_ptr<std::remove_pointer_t<HICON>, IconDeleter>;

/// A window's device context with an object selected into it, for as long as it lives.
class SelectedDc {
 public:
  SelectedDc(HWND window, HGDIOBJ object)
      : window_(window), dc_(GetDC(window)), previous_(SelectObject(dc_, object)) {}
  ~SelectedDc() {
    SelectObject(dc_, previous_);
    ReleaseDC(window_, dc_);
  }
  SelectedDc(const SelectedDc&) = delete;
  SelectedDc& operator=(const SelectedDc&) = delete;

  [[nodiscard]] HDC get() const { return dc_; }

 private:
  HWND window_;
  HDC dc_;
  HGDIOBJ previous_;
};

/// `percent` of the front colour over the colour behind.
inline COLORREF blended(COLORREF front, COLORREF behind, int percent) {
  const auto mix = [percent](int above, int below) {
    return (above * percent + below * (100 - percent)) / 100;
  };
  return RGB(mix(GetRValue(front), GetRValue(behind)), mix(GetGValue(front), GetGValue(behind)),
             mix(GetBValue(front), GetBValue(behind)));
}

}  // namespace karvel
