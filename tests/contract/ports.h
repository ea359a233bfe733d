#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>

#include "platform/files.h"
#include "platform/instance.h"
#include "platform/internet.h"
#include "platform/profile.h"

namespace karvel {

inline constexpr std::uint32_t kNoLimit = UINT32_MAX;

// The real implementations of the ports on the platform that the tests run on.
std::unique_ptr<Files> makeFiles();
std::unique_ptr<Profile> makeProfile();
std::unique_ptr<Instance> makeInstance();
/// Its time limits, in milliseconds, are never longer than `longestLimit` is then, whatever its
/// user asks for: a test need not wait as long as a shop would.
std::unique_ptr<Internet> makeInternet(const std::uint32_t& longestLimit = kNoLimit);

/// What makeInternet() makes.
template <typename Library>
class ImpatientInternet final : public Library {
 public:
  explicit ImpatientInternet(const std::uint32_t& longestLimit) : longestLimit_(longestLimit) {}

  bool setOption(Internet::Handle root, std::uint32_t option, std::uint32_t milliseconds) override {
    return Library::setOption(root, option, std::min(milliseconds, longestLimit_));
  }

 private:
  const std::uint32_t& longestLimit_;
};

}  // namespace karvel
