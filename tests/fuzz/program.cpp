#include <algorithm>

#include "fuzz/fuzz.h"
#include "unit/random_user.h"

namespace karvel::fuzz {

/// The whole program with its model, under a tape of ticks, requests, faults and user actions.
void tryInput(FuzzedDataProvider& input) {
  constexpr std::size_t kMostActions = 100;
  const std::size_t actions = std::min(input.remaining_bytes() / 2, kMostActions);
  RandomUser user([&input] { return unsigned{input.ConsumeIntegral<std::uint16_t>()}; });
  user.live(static_cast<int>(actions));
  require(!::testing::Test::HasFailure());
}

}  // namespace karvel::fuzz
