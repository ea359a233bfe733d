#pragma once

#include <array>
#include <cstdint>

namespace karvel {

/// The figures of one desk and day.
struct DeskFigures {
  static constexpr int kBands = 8;

  std::int32_t unhandled = 0;
  std::int32_t handled = 0;
  std::int32_t mail = 0;          ///< of the handled ones
  std::int32_t reservations = 0;  ///< of the handled ones
  /// Handled receptions by hour of issue: before 9, 9-10, 11-12, 13-14, 15-16, 17-18, 19-20, 21-23.
  std::array<std::int32_t, kBands> band{};
  std::int32_t averageWait = 0;   ///< minutes
  std::int32_t longestWait = 0;   ///< minutes
  std::int16_t callInterval = 0;  ///< minutes, on average between one call and the next

  bool operator==(const DeskFigures&) const = default;
};

}  // namespace karvel
