#pragma once

#include "platform/clock.h"

namespace karvel {

class SystemClock final : public Clock {
 public:
  DateTime now() override;
  void sleep(std::chrono::milliseconds time) override;
};

}  // namespace karvel
