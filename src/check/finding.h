#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace karvel {

enum class Mark : std::uint8_t {
  kGood,
  kNotice,   ///< worth knowing; the shop sends all the same
  kTrouble,  ///< stands in the way of sending
};

/// One thing that was looked at, as one line of Japanese text.
struct Finding {
  Mark mark = Mark::kGood;
  std::string_view anchor;  ///< of its explanation in the manual's chapter on trouble
  std::string found;
  std::string advice;  ///< what to do; "" where nothing is
};

/// Findings in the order in which they are to be read, and put right.
class Findings {
 public:
  void good(std::string_view anchor, std::string found) {
    all.push_back({Mark::kGood, anchor, std::move(found), ""});
  }
  void notice(std::string_view anchor, std::string found, std::string advice) {
    all.push_back({Mark::kNotice, anchor, std::move(found), std::move(advice)});
  }
  void trouble(std::string_view anchor, std::string found, std::string advice) {
    all.push_back({Mark::kTrouble, anchor, std::move(found), std::move(advice)});
  }

  std::vector<Finding> all;
};

}  // namespace karvel
