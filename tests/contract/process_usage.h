#pragma once

#include <cstddef>

namespace karvel {

/// What this process holds at the moment.
struct ProcessUsage {
  std::size_t bytes = 0;    ///< of memory
  std::size_t handles = 0;  ///< to files, sockets and whatever else the system counts

  static ProcessUsage now();

  /// By so much the memory may differ without a reason; the sanitizers keep what has been freed.
#ifdef __SANITIZE_ADDRESS__
  static constexpr std::size_t kAllowance = 300'000'000;
#else
  static constexpr std::size_t kAllowance = 4'000'000;
#endif
};

}  // namespace karvel
