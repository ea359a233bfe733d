#pragma once

#include <cstdint>
#include <iosfwd>
#include <random>
#include <string>
#include <vector>

namespace karvel::sample {

/// Random numbers that are the same for a seed on every platform, which the standard library's
/// distributions do not promise.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : engine_(seed) {}
  /// 0 to `limit` - 1.
  int below(int limit) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(limit)); }
  bool happens(int percent) { return below(100) < percent; }

 private:
  std::mt19937_64 engine_;
};

/// One ticket of a desk. Times are seconds since midnight.
struct Reception {
  int number = 0;
  int issued = 0;
  int called = 0;  ///< past midnight it starts again at 0
  bool handled = false;
  bool mail = false;
  int reserved = 0;
};

/// A plausible day at a desk: tickets in the order of issue, most of them around noon and in the
/// afternoon, nearly all handled after a wait that is longer in the busy hours.
std::vector<Reception> receptionsOfDay(int count, std::uint64_t seed);

/// Writes a reception file as the ticket application does: a record of 11 TAB-separated fields per
/// line, ended by CR LF.
void writeReceptions(std::ostream& out, const std::vector<Reception>& receptions);

}  // namespace karvel::sample
