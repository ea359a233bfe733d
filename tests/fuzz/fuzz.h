#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace karvel::fuzz {

/// What one source of this folder tries with each input.
void tryInput(FuzzedDataProvider& input);

/// A property that does not hold is a finding.
inline void require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace karvel::fuzz

// Each fuzzer is one source, so this is defined once.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  karvel::fuzz::tryInput(input);
  return 0;
}
