#pragma once

#include "platform/instance.h"

namespace karvel {

class FakeInstance final : public Instance {
 public:
  bool free = true;
  bool acquire(const std::string&) override { return free; }
};

}  // namespace karvel
