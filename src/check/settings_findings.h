#pragma once

#include <string>
#include <vector>

#include "check/finding.h"
#include "check/shop.h"

namespace karvel {

/// The settings file itself, and what the program makes of its values.
void findSettings(Shop& shop, Findings& findings);

/// A key of the own settings, its value as stored, and what the program makes of it where that does
/// not show. Of the password only whether there is one.
struct SettingShown {
  std::string key;
  std::string value;
  std::string meaning;
};
[[nodiscard]] std::vector<SettingShown> shownSettings(Shop& shop);

}  // namespace karvel
