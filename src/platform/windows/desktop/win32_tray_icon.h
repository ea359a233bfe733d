#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "platform/desktop.h"
#include "platform/windows/desktop/tasuku.h"
#include "platform/windows/desktop/win32_gdi.h"

namespace karvel {

/// The program's icon in the notification area, from construction to destruction. A failure to
/// show it is not reported: it is tried again when the taskbar has been started anew.
class Win32TrayIcon {
 public:
  Win32TrayIcon(HWND window, TrayImage image, const std::string& tip,
                std::function<void()> onRightButtonUp);
  ~Win32TrayIcon();
  Win32TrayIcon(const Win32TrayIcon&) = delete;
  Win32TrayIcon& operator=(const Win32TrayIcon&) = delete;

  void change(TrayImage image, const std::string& tip);
  /// Adds it once more, after the taskbar has lost it.
  void addAgain() const;

 private:
  void load(TrayImage image, const std::string& tip);
  void notify(DWORD action) const;

  HWND window_;
  Win32Icon icon_;
  std::wstring tip_;
  Tasuku tasuku_;
};

}  // namespace karvel
