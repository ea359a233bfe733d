#pragma once

#include <bitset>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "text/date_time.h"

namespace karvel {

/// The call times of one desk in ascending text order.
///
/// Equal entries follow each other in that order and add nothing to the interval, so each time is
/// kept once: as a bit when it is written hh:mm:ss, which sorts as its text does, as a text when it
/// is written otherwise. Texts that are not a time of day are ignored.
class CallTimes {
 public:
  void add(std::string_view text);

  /// Adds a time written hh:mm:ss.
  void addSeconds(int seconds) { written_.set(static_cast<std::size_t>(seconds)); }

  /// The average of the differences of 1 to 3599 seconds between neighbours, in whole minutes.
  [[nodiscard]] int averageIntervalMinutes() const;

 private:
  std::bitset<kSecondsPerDay> written_;
  std::map<std::string, int, std::less<>> otherwise_;  ///< text and its seconds
};

}  // namespace karvel
