#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace karvel {

/// Eight characters as one number, the first in the lowest bits: arithmetic on it looks at all of
/// them in one step, where a file of a million records is read.
inline std::uint64_t eightBytes(const char* bytes) {
  static_assert(std::endian::native == std::endian::little);
  std::uint64_t number = 0;
  std::memcpy(&number, bytes, sizeof number);
  return number;
}

/// The same byte in each of the eight places.
constexpr std::uint64_t inEachPlace(unsigned char byte) {
  return std::uint64_t{0x0101'0101'0101'0101} * byte;
}

}  // namespace karvel
