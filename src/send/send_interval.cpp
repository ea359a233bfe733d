#include "send/send_interval.h"

#include <algorithm>
#include <array>

#include "text/numeric_value.h"

namespace karvel {
namespace {

constexpr std::array kIntervals{
    SendInterval{0, 0, 0, 0},          // by hand
    SendInterval{1, 150, 60, 60},      // 5 minutes
    SendInterval{2, 450, 360, 210},    // 15 minutes
    SendInterval{3, 900, 810, 360},    // 30 minutes
    SendInterval{4, 1800, 1710, 810},  // 60 minutes
};

}  // namespace

const SendInterval& SendInterval::of(const std::string& stored) {
  const double value = numericValue(stored);
  const auto* found = std::find_if(kIntervals.begin(), kIntervals.end(),
                                   [&](const SendInterval& each) { return value == each.option; });
  return found != kIntervals.end() ? *found : kIntervals.front();
}

const SendInterval& SendInterval::of(int option) {
  return kIntervals.at(static_cast<std::size_t>(option));
}

}  // namespace karvel
