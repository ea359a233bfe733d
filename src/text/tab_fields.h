#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <string_view>

#include "text/eight_bytes.h"

namespace karvel {

/// A line cut at its TABs into a fixed number of fields.
///
/// TAB is never half of a double-byte character, so bytes are searched, eight at a time: this runs
/// once for every record of a file that may hold a million.
template <std::size_t kCount>
class TabFields {
 public:
  /// False when the line has another number of fields; the line must outlive the fields.
  [[nodiscard]] bool split(std::string_view line) {
    line_ = line;
    found_ = 0;
    std::size_t position = 0;
    for (; position + sizeof(std::uint64_t) <= line.size(); position += sizeof(std::uint64_t)) {
      if (!takeTabs(tabsAmongEight(line.data() + position), position)) return false;
    }
    for (; position < line.size(); ++position) {
      if (line[position] == '\t' && !takeTab(position)) return false;
    }
    return found_ == kTabs;
  }

  [[nodiscard]] std::string_view operator[](std::size_t field) const {
    const std::size_t begin = field == 0 ? 0 : tabs_[field - 1] + 1;
    const std::size_t end = field == kTabs ? line_.size() : tabs_[field];
    return {line_.data() + begin, end - begin};
  }

 private:
  static constexpr std::size_t kTabs = kCount - 1;

  /// The highest bit of every byte that is a TAB.
  static std::uint64_t tabsAmongEight(const char* bytes) {
    // A TAB becomes 0: the only byte that the addition leaves without its highest bit.
    const std::uint64_t word = eightBytes(bytes) ^ inEachPlace('\t');
    constexpr std::uint64_t kAllButHighest = inEachPlace(0x7F);
    return ~(((word & kAllButHighest) + kAllButHighest) | word | kAllButHighest);
  }

  bool takeTabs(std::uint64_t tabs, std::size_t position) {
    for (; tabs != 0; tabs &= tabs - 1) {
      const auto byte = static_cast<std::size_t>(std::countr_zero(tabs)) / 8;
      if (!takeTab(position + byte)) return false;
    }
    return true;
  }

  bool takeTab(std::size_t position) {
    if (found_ == kTabs) return false;
    tabs_[found_++] = position;
    return true;
  }

  std::string_view line_;
  std::array<std::size_t, kTabs> tabs_{};
  std::size_t found_ = 0;
};

}  // namespace karvel
