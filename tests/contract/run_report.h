#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace karvel {

/// What the run log tells of one run to an FTP site.
struct RunReport {
  enum class Delivery : std::uint8_t { kNotTried, kDone, kNotPut, kNotRenamed };

  bool wellFormed = false;  ///< the lines of one run in their order, and no others
  bool connected = false;
  Delivery shopInfo = Delivery::kNotTried;
  Delivery table = Delivery::kNotTried;
  std::string lastStatus;  ///< what the status line must show; "" when the log cannot tell

  [[nodiscard]] bool succeeded() const { return table == Delivery::kDone; }
};

RunReport reportOf(const std::vector<std::string>& log);

/// "" or 128 characters that begin with a number and "/", as the last failure is kept.
bool isFailureText(const std::string& text);

}  // namespace karvel
