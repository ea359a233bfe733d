#pragma once

#include <algorithm>
#include <chrono>

#include "platform/ftp_time_limits.h"

namespace karvel {

/// The time that is left to the running exchange and to its running step.
class FtpTimeWatch {
 public:
  using Milliseconds = FtpTimeLimits::Milliseconds;

  void beginExchange(Milliseconds limit) { end_ = stepEnd_ = Clock::now() + limit; }
  /// From here the next step may take `limit`, within its exchange.
  void beginStep(Milliseconds limit) { stepEnd_ = Clock::now() + limit; }

  /// 0 when the time is up.
  [[nodiscard]] Milliseconds remaining() const {
    const auto left = std::min(end_, stepEnd_) - Clock::now();
    return std::max(Milliseconds{0}, std::chrono::ceil<Milliseconds>(left));
  }

 private:
  using Clock = std::chrono::steady_clock;

  Clock::time_point end_;
  Clock::time_point stepEnd_;
};

}  // namespace karvel
