#pragma once

#include <windows.h>

#include <chrono>

namespace karvel {

/// Limits one call to the internet library, which has limits for silence, but none for a server
/// that dribbles. When the time is up, the handle that the call works with is closed: that is the
/// library's way to break a call off.
class CallLimit {
 public:
  CallLimit(void* handle, std::chrono::milliseconds limit);
  CallLimit(const CallLimit&) = delete;
  CallLimit& operator=(const CallLimit&) = delete;
  ~CallLimit();

  /// After the call: true when its time was up, and the handle is closed.
  [[nodiscard]] bool end();

 private:
  static void CALLBACK onTimeUp(PTP_CALLBACK_INSTANCE, void* self, PTP_TIMER);

  void* const handle_;
  bool timeWasUp_ = false;
  PTP_TIMER timer_;
};

}  // namespace karvel
