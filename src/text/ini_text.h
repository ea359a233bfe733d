#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace karvel {

/// The text of a profile file in code page 932, by the rules of platform/profile.h. A byte order
/// mark of UTF-8 at its start is skipped, and kept.

/// The value of a key, or "" when the section or the key is missing.
[[nodiscard]] std::string iniValue(std::string_view text, std::string_view section,
                                   std::string_view key);

/// One line of a profile text: a section's heading, whose key is empty, or a key in it.
struct IniLine {
  std::string_view section;
  std::string_view key;
  std::string_view value;
};

/// Passes every heading and every key, also those that iniValue does not come to.
void eachIniLine(std::string_view text, const std::function<void(const IniLine&)>& take);

/// The text with the key set to the value; every other line keeps its bytes. A new key follows the
/// last line of its section that is not blank, a new section the end of the text.
[[nodiscard]] std::string iniWithValue(std::string_view text, std::string_view section,
                                       std::string_view key, std::string_view value);

}  // namespace karvel
