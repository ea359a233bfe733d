#include "platform/windows/desktop/win32_tray_icon.h"

#include <shellapi.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/windows/desktop/win32_images.h"
#include "platform/windows/desktop/win32_scaling.h"
#include "platform/windows/system/wide_text.h"

namespace karvel {
namespace {

constexpr UINT kIdentifier = 10;

}  // namespace

Win32TrayIcon::Win32TrayIcon(HWND window, TrayImage image, const std::string& tip,
                             std::function<void()> onRightButtonUp)
    : window_(window), tasuku_(window, std::move(onRightButtonUp)) {
  load(image, tip);
  notify(NIM_ADD);
}

Win32TrayIcon::~Win32TrayIcon() {
  notify(NIM_DELETE);
}

void Win32TrayIcon::change(TrayImage image, const std::string& tip) {
  load(image, tip);
  notify(NIM_MODIFY);
}

void Win32TrayIcon::addAgain() const {
  notify(NIM_ADD);
}

void Win32TrayIcon::load(TrayImage image, const std::string& tip) {
  icon_ = trayImage(image, systemMetric(SM_CXSMICON, dpiOf(window_)));
  tip_ = toWide(tip);
}

void Win32TrayIcon::notify(DWORD action) const {
  // The size of Windows Vista and later; older systems cannot run the program.
  NOTIFYICONDATAW data{};
  data.cbSize = sizeof data;
  data.hWnd = window_;
  data.uID = kIdentifier;
  data.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
  data.uCallbackMessage = Tasuku::kCallbackMessage;
  data.hIcon = icon_.get();
  std::copy_n(tip_.begin(), std::min(tip_.size(), std::size(data.szTip) - 1), data.szTip);
  Shell_NotifyIconW(action, &data);
}

}  // namespace karvel
