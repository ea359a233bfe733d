#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <map>

#include "platform/desktop.h"

namespace karvel {

/// A window that nobody sees: it receives the timers' ticks and what the system tells every
/// program.
class Win32ServiceWindow {
 public:
  Win32ServiceWindow();
  ~Win32ServiceWindow();
  Win32ServiceWindow(const Win32ServiceWindow&) = delete;
  Win32ServiceWindow& operator=(const Win32ServiceWindow&) = delete;

  /// False when the system can show no windows; timers work all the same.
  [[nodiscard]] bool canShowWindows() const { return canShowWindows_; }

  /// Calls `onTick` every interval until stop(), which also drops a tick that is due but not yet
  /// delivered. `onTick` must live until then.
  [[nodiscard]] UINT_PTR start(std::chrono::milliseconds interval,
                               const std::function<void()>& onTick);
  void stop(UINT_PTR timer);

  /// The session ends, or another program asks this one to end. The process may be ended once this
  /// has returned.
  std::function<void()> onEnd;
  /// The taskbar has been started and knows no icons.
  std::function<void()> onTaskbarCreated;

 private:
  static LRESULT CALLBACK windowProc(HWND window, UINT message, WPARAM first, LPARAM second);
  LRESULT handleMessage(UINT message, WPARAM first, LPARAM second);
  void tick(UINT_PTR timer) const;

  UINT taskbarCreated_;
  bool canShowWindows_ = true;
  HWND handle_ = nullptr;
  UINT_PTR lastTimer_ = 0;
  std::map<UINT_PTR, const std::function<void()>*> handlers_;
};

/// A timer of the service window, which must outlive it.
class Win32Timer final : public Timer {
 public:
  Win32Timer(Win32ServiceWindow& service, std::chrono::milliseconds interval,
             std::function<void()> onTick);
  ~Win32Timer() override;
  Win32Timer(const Win32Timer&) = delete;
  Win32Timer& operator=(const Win32Timer&) = delete;

  void setEnabled(bool enabled) override;

 private:
  static constexpr UINT_PTR kNone = 0;

  Win32ServiceWindow& service_;
  std::chrono::milliseconds interval_;
  std::function<void()> onTick_;
  UINT_PTR running_ = kNone;
};

}  // namespace karvel
