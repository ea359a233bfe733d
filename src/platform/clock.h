#pragma once

#include <chrono>

#include "text/date_time.h"

namespace karvel {

/// The only clock: no other code reads the time or sleeps.
class Clock {
 public:
  virtual ~Clock() = default;

  /// The current local date and time.
  [[nodiscard]] virtual DateTime now() = 0;

  /// Blocks the calling thread for the given time.
  virtual void sleep(std::chrono::milliseconds time) = 0;
};

}  // namespace karvel
