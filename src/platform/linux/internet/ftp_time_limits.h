#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>

namespace karvel {

/// How long an FTP session waits.
struct FtpTimeLimits {
  using Milliseconds = std::chrono::milliseconds;

  Milliseconds connect{10'000};  ///< until the connection stands, the name's lookup included
  Milliseconds answer{10'000};   ///< for each reply of the server

  /// A transfer without progress, its closing reply included: what lies in buffers on the way may
  /// need longer than an answer does.
  [[nodiscard]] Milliseconds silence() const { return 3 * answer; }
  /// A whole call: a server that dribbles makes progress for ever.
  [[nodiscard]] Milliseconds exchange() const { return 6 * answer; }
  /// A whole upload: another tenth of an answer's limit for every 10 kB.
  [[nodiscard]] Milliseconds upload(std::uint64_t bytes) const {
    constexpr std::uint64_t kStep = 10'000;
    return exchange() + static_cast<std::int64_t>(bytes / kStep) * (answer / 10);
  }
};

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
