#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "platform/desktop.h"
#include "platform/windows/desktop/win32_look.h"
#include "platform/windows/desktop/win32_service_window.h"

namespace karvel {

/// The window procedure that a window has while its icon is in the notification area.
class Tasuku {
 public:
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

/// The program's icon in the notification area, from construction to destruction. A failure to
/// show it is not reported: it is tried again every second for a minute, and when the taskbar has
/// been started anew.
class Win32TrayIcon {
 public:
  static constexpr UINT kIdentifier = 10;
  /// What the icon sends to its window, with its identifier and an event of the mouse.
  static constexpr UINT kCallbackMessage = WM_USER + 1;

  Win32TrayIcon(HWND window, Win32ServiceWindow& service, TrayImage image, const std::string& tip,
                std::function<void()> onRightButtonUp);
  ~Win32TrayIcon();
  Win32TrayIcon(const Win32TrayIcon&) = delete;
  Win32TrayIcon& operator=(const Win32TrayIcon&) = delete;

  void change(TrayImage image, const std::string& tip);
  /// Adds it once more, after the taskbar has lost it.
  void addAgain();

 private:
  void load(TrayImage image, const std::string& tip);
  void retry();
  /// False when the taskbar has refused, has not answered in time, or is not there.
  bool notify(DWORD action) const;

  HWND window_;
  Win32Icon icon_;
  std::wstring tip_;
  Win32Timer retryTimer_;
  int retriesLeft_ = 0;
  Tasuku tasuku_;
};

}  // namespace karvel
