#pragma once

#include <chrono>
#include <cstdint>

namespace karvel {

/// How long an FTP session may wait for its server.
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

}  // namespace karvel
