#include "platform/windows/desktop/win32_service_window.h"

#include <utility>

namespace karvel {
namespace {

constexpr const wchar_t* kClass = L"karvel.service";

HWND createWindow(HWND parent) {
  return CreateWindowExW(0, kClass, L"", WS_POPUP, 0, 0, 0, 0, parent, nullptr,
                         GetModuleHandleW(nullptr), nullptr);
}

}  // namespace

Win32ServiceWindow::Win32ServiceWindow()
    : taskbarCreated_(RegisterWindowMessageW(L"TaskbarCreated")) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = &windowProc;
  description.hInstance = GetModuleHandleW(nullptr);
  description.lpszClassName = kClass;
  RegisterClassExW(&description);

  handle_ = createWindow(nullptr);
  canShowWindows_ = handle_ != nullptr;
  if (!canShowWindows_) handle_ = createWindow(HWND_MESSAGE);
  SetWindowLongPtrW(handle_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  // The taskbar has fewer rights than a program that an administrator has started.
  ChangeWindowMessageFilterEx(handle_, taskbarCreated_, MSGFLT_ALLOW, nullptr);
}

Win32ServiceWindow::~Win32ServiceWindow() {
  SetWindowLongPtrW(handle_, GWLP_USERDATA, 0);
  DestroyWindow(handle_);
}

UINT_PTR Win32ServiceWindow::start(std::chrono::milliseconds interval,
                                   const std::function<void()>& onTick) {
  // A number of its own each time: a tick that an earlier timer has left behind finds nobody.
  const UINT_PTR timer = ++lastTimer_;
  handlers_[timer] = &onTick;
  SetTimer(handle_, timer, static_cast<UINT>(interval.count()), nullptr);
  return timer;
}

void Win32ServiceWindow::stop(UINT_PTR timer) {
  if (handlers_.erase(timer) != 0) KillTimer(handle_, timer);
}

LRESULT CALLBACK Win32ServiceWindow::windowProc(HWND window, UINT message, WPARAM first,
                                                LPARAM second) {
  auto* self = reinterpret_cast<Win32ServiceWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self == nullptr) return DefWindowProcW(window, message, first, second);
  return self->handleMessage(message, first, second);
}

LRESULT Win32ServiceWindow::handleMessage(UINT message, WPARAM first, LPARAM second) {
  if (message == taskbarCreated_ && onTaskbarCreated) onTaskbarCreated();
  switch (message) {
    case WM_TIMER:
      tick(first);
      return 0;
    case WM_ENDSESSION:
      if (first != FALSE && onEnd) onEnd();
      return 0;
    case WM_CLOSE:
      // The window itself stays: without it the timers would stand still.
      if (onEnd) onEnd();
      return 0;
    default:
      return DefWindowProcW(handle_, message, first, second);
  }
}

void Win32ServiceWindow::tick(UINT_PTR timer) const {
  const auto found = handlers_.find(timer);
  if (found != handlers_.end()) (*found->second)();
}

Win32Timer::Win32Timer(Win32ServiceWindow& service, std::chrono::milliseconds interval,
                       std::function<void()> onTick)
    : service_(service), interval_(interval), onTick_(std::move(onTick)) {
}

Win32Timer::~Win32Timer() {
  service_.stop(running_);
}

void Win32Timer::setEnabled(bool enabled) {
  service_.stop(running_);
  running_ = enabled ? service_.start(interval_, onTick_) : kNone;
}

}  // namespace karvel
