#include "stats/call_times.h"

#include <optional>

namespace karvel {
namespace {

constexpr std::size_t kWrittenLength = 8;  // hh:mm:ss
constexpr int kLongestInterval = 3599;

/// Sums up the differences that count.
class IntervalSum {
 public:
  void add(int seconds) {
    const int difference = previous_ ? seconds - *previous_ : 0;
    if (difference >= 1 && difference <= kLongestInterval) {
      sum_ += difference;
      ++count_;
    }
    previous_ = seconds;
  }

  [[nodiscard]] int averageMinutes() const {
    return count_ == 0 ? 0 : static_cast<int>(roundedMinutes(sum_ / count_));
  }

 private:
  std::optional<int> previous_;
  double sum_ = 0;
  int count_ = 0;
};

std::string writtenForm(std::size_t seconds) {
  const int total = static_cast<int>(seconds);
  return formatTime({.hour = total / 3600, .minute = total / 60 % 60, .second = total % 60});
}

}  // namespace

void CallTimes::add(std::string_view text) {
  const auto seconds = secondsOfDay(text);
  if (!seconds) return;
  if (text.size() == kWrittenLength) {
    addSeconds(*seconds);
  } else {
    otherwise_.emplace(text, *seconds);
  }
}

int CallTimes::averageIntervalMinutes() const {
  IntervalSum sum;
  auto other = otherwise_.begin();
  for (std::size_t seconds = 0; seconds < written_.size(); ++seconds) {
    if (!written_.test(seconds)) continue;
    for (; other != otherwise_.end() && other->first < writtenForm(seconds); ++other) {
      sum.add(other->second);
    }
    sum.add(static_cast<int>(seconds));
  }
  for (; other != otherwise_.end(); ++other) sum.add(other->second);
  return sum.averageMinutes();
}

}  // namespace karvel
