#pragma once

#include <algorithm>
#include <chrono>

namespace karvel {

/// How long an FTP session waits.
struct FtpTimeLimits {
  std::chrono::milliseconds connect{10'000};  ///< until the connection stands
  std::chrono::milliseconds answer{10'000};   ///< for each reply of the server

  /// A transfer without progress, its closing reply included: what lies in buffers on the way may
  /// need longer than an answer does.
  [[nodiscard]] std::chrono::milliseconds transfer() const { return 3 * answer; }
  /// A whole exchange: a server that dribbles for ever makes progress for ever.
  [[nodiscard]] std::chrono::milliseconds exchange() const { return 60 * answer; }
};

/// Tells when the running step of an FTP exchange has taken too long.
class FtpTimeWatch {
 public:
  using Milliseconds = std::chrono::milliseconds;

  /// Begins an exchange as a whole and its first step.
  void begin(Milliseconds whole, Milliseconds step) {
    end_ = Clock::now() + whole;
    beginStep(step);
  }

  /// Something has happened: from here the next step may take `limit`.
  void beginStep(Milliseconds limit) { stepEnd_ = Clock::now() + limit; }

  /// The time that is left, 0 when it is up.
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
