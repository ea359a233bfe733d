#include "platform/windows/internet/call_limit.h"

#include <wininet.h>

namespace karvel {

CallLimit::CallLimit(void* handle, std::chrono::milliseconds limit)
    : handle_(handle), timer_(CreateThreadpoolTimer(onTimeUp, this, nullptr)) {
  constexpr std::int64_t kTicks = 10'000;  // of 100 ns in a millisecond
  ULARGE_INTEGER due{};
  due.QuadPart = static_cast<ULONGLONG>(-limit.count() * kTicks);  // negative: from now on
  FILETIME time{due.LowPart, due.HighPart};
  if (timer_ != nullptr) SetThreadpoolTimer(timer_, &time, 0, 0);
}

CallLimit::~CallLimit() {
  static_cast<void>(end());
}

bool CallLimit::end() {
  if (timer_ == nullptr) return timeWasUp_;
  SetThreadpoolTimer(timer_, nullptr, 0, 0);
  WaitForThreadpoolTimerCallbacks(timer_, TRUE);
  CloseThreadpoolTimer(timer_);
  timer_ = nullptr;
  return timeWasUp_;
}

void CallLimit::onTimeUp(PTP_CALLBACK_INSTANCE, void* self, PTP_TIMER) {
  auto& limit = *static_cast<CallLimit*>(self);
  limit.timeWasUp_ = InternetCloseHandle(limit.handle_) != FALSE;
}

}  // namespace karvel
