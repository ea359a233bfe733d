#pragma once

#include <functional>

#include "platform/clock.h"

namespace karvel {

/// A clock that stands still until it is moved; sleeping takes no time.
class FakeClock final : public Clock {
 public:
  DateTime time{2024, 1, 15, 9, 5, 7};
  std::chrono::milliseconds slept{0};
  std::function<void()> onSleep;  ///< what happens meanwhile
  int secondsPerLook = 0;         ///< that it goes on whenever it is looked at

  DateTime now() override {
    time.second += secondsPerLook;
    return time;
  }
  void sleep(std::chrono::milliseconds pause) override {
    slept += pause;
    if (onSleep) onSleep();
  }
};

}  // namespace karvel
