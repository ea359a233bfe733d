#include "platform/windows/desktop/win32_tray_icon.h"

#include <shellapi.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/windows/system/wide_text.h"

namespace karvel {
namespace {

/// The window property that leads from the window to its object.
constexpr const wchar_t* kProperty = L"karvel.Tasuku";

constexpr std::chrono::seconds kRetryInterval{1};
constexpr int kRetries = 60;

}  // namespace

Tasuku::Tasuku(HWND window, std::function<void()> onRightButtonUp)
    : window_(window), onRightButtonUp_(std::move(onRightButtonUp)) {
  SetPropW(window_, kProperty, this);
  OldWndProc = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Task_WndProc)));
}

Tasuku::~Tasuku() {
  SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(OldWndProc));
  RemovePropW(window_, kProperty);
}

LRESULT CALLBACK Tasuku::Task_WndProc(HWND window, UINT message, WPARAM first, LPARAM second) {
  const auto* self = static_cast<const Tasuku*>(GetPropW(window, kProperty));
  if (self == nullptr) return DefWindowProcW(window, message, first, second);
  const WNDPROC previous = self->OldWndProc;
  if (message == Win32TrayIcon::kCallbackMessage && second == WM_RBUTTONUP) {
    const std::function<void()> handler = self->onRightButtonUp_;
    handler();
  }
  return CallWindowProcW(previous, window, message, first, second);
}

Win32TrayIcon::Win32TrayIcon(HWND window, Win32ServiceWindow& service, TrayImage image,
                             const std::string& tip, std::function<void()> onRightButtonUp)
    : window_(window),
      retryTimer_(service, kRetryInterval, [this] { retry(); }),
      tasuku_(window, std::move(onRightButtonUp)) {
  load(image, tip);
  addAgain();
}

Win32TrayIcon::~Win32TrayIcon() {
  notify(NIM_DELETE);
}

void Win32TrayIcon::change(TrayImage image, const std::string& tip) {
  load(image, tip);
  notify(NIM_MODIFY);
}

void Win32TrayIcon::addAgain() {
  retriesLeft_ = kRetries;
  retryTimer_.setEnabled(!notify(NIM_ADD));
}

void Win32TrayIcon::retry() {
  // A taskbar that was too busy to answer may have taken the icon in all the same.
  const bool there = notify(NIM_MODIFY) || notify(NIM_ADD);
  if (there || --retriesLeft_ == 0) retryTimer_.setEnabled(false);
}

void Win32TrayIcon::load(TrayImage image, const std::string& tip) {
  icon_ = trayImage(image, IconSize::kSmall, dpiOf(window_));
  tip_ = toWide(tip);
}

bool Win32TrayIcon::notify(DWORD action) const {
  // The size of Windows Vista and later; older systems cannot run the program.
  NOTIFYICONDATAW data{};
  data.cbSize = sizeof data;
  data.hWnd = window_;
  data.uID = kIdentifier;
  data.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
  data.uCallbackMessage = kCallbackMessage;
  data.hIcon = icon_.get();
  std::copy_n(tip_.begin(), std::min(tip_.size(), std::size(data.szTip) - 1), data.szTip);
  return Shell_NotifyIconW(action, &data) != FALSE;
}

}  // namespace karvel
