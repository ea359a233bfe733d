#pragma once

#include <cstdint>
#include <string>

namespace karvel {

/// An interval of unattended sends. Counts are ticks of the interval timer.
struct SendInterval {
  int option;                    ///< index of the panel's option button, and the stored value
  std::int16_t threshold;        ///< from one send to the next; 0: sends by hand only
  std::int16_t countAfterStart;  ///< counted as passed already at start
  std::int16_t countAfterSave;   ///< likewise when the settings are saved

  /// The interval that a stored value selects; any value without one selects sends by hand.
  static const SendInterval& of(const std::string& stored);
  /// The interval of an option button.
  static const SendInterval& of(int option);

  [[nodiscard]] bool unattended() const { return threshold != 0; }
};

}  // namespace karvel
