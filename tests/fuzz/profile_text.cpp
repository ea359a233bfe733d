#include <string>
#include <string_view>

#include "fuzz/fuzz.h"
#include "text/ini_text.h"

namespace karvel::fuzz {
namespace {

/// Without blanks around it and one pair of quotes, as a reader sees it.
std::string plainValue(FuzzedDataProvider& input) {
  std::string value = "v";
  for (const char c : input.ConsumeRandomLengthString(20)) {
    if (c != '\r' && c != '\n') value += c;
  }
  return value + ".";
}

bool hasLineEnd(std::string_view text) {
  return text.find_first_of("\r\n") != std::string_view::npos;
}

/// What of the former text is gone, apart from what both have at their beginnings and ends.
std::string_view removed(std::string_view before, std::string_view after) {
  while (!before.empty() && !after.empty() && before.front() == after.front()) {
    before.remove_prefix(1);
    after.remove_prefix(1);
  }
  while (!before.empty() && !after.empty() && before.back() == after.back()) {
    before.remove_suffix(1);
    after.remove_suffix(1);
  }
  return before;
}

}  // namespace

/// A value that is written is read back, and no other line changes.
void tryInput(FuzzedDataProvider& input) {
  const char* const section = input.PickValueInArray({"S", "FTP INFOMATION", "\x95\x5C]\x83\x5C"});
  const char* const key = input.PickValueInArray({"K", "FTP EXIT", "\x95\x5C=\x83\x5C"});
  const std::string value = plainValue(input);
  const std::string before = input.ConsumeRemainingBytesAsString();
  const std::string after = iniWithValue(before, section, key, value);
  const bool nameable = std::string_view(section).find(']') == std::string_view::npos &&
                        std::string_view(key).find('=') == std::string_view::npos;
  require(!nameable || iniValue(after, section, key) == value);
  require(!hasLineEnd(removed(before, after)));
  require(!nameable || iniWithValue(after, section, key, value) == after);
}

}  // namespace karvel::fuzz
