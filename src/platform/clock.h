#pragma once

#include <chrono>

#include "text/date_time.h"

namespace karvel {

/// Time as the system sees it; system code neither sleeps nor reads a clock anywhere else.
class Clock {
 public:
  virtual ~Clock() = default;

  /// The current local date and time.
  [[nodiscard]] virtual DateTime now() = 0;

  /// Blocks the calling thread for the given time.
  virtual void sleep(std::chrono::milliseconds time) = 0;
};

}  // namespace karvel
