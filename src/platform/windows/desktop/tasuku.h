#pragma once

#include <windows.h>

#include <functional>

namespace karvel {

/// The window procedure that a window has while its icon is in the notification area.
class Tasuku {
 public:
  /// What the icon sends to its window.
  static constexpr UINT kCallbackMessage = WM_USER + 1;

  /// Installs Task_WndProc; the destructor puts the previous procedure back, which must happen
  /// before the window goes. `onRightButtonUp` may end the life of this object.
  Tasuku(HWND window, std::function<void()> onRightButtonUp);
  ~Tasuku();
  Tasuku(const Tasuku&) = delete;
  Tasuku& operator=(const Tasuku&) = delete;

 private:
  static LRESULT CALLBACK Task_WndProc(HWND window, UINT message, WPARAM first, LPARAM second);

  HWND window_;
  std::function<void()> onRightButtonUp_;
  WNDPROC OldWndProc = nullptr;
};

}  // namespace karvel
