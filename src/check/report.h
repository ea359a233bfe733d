#pragma once

#include <string>
#include <vector>

#include "check/finding.h"
#include "check/settings_findings.h"

namespace karvel {

/// What a check tells: to a person at a terminal, or as a page that can be mailed.
struct Report {
  std::vector<Finding> findings;
  std::vector<SettingShown> settings;
  std::vector<std::string> log;
  /// Names and values of what was checked: shop folder, version, date.
  std::vector<std::pair<std::string, std::string>> facts;
  std::string manual;  ///< address of the manual's chapter on trouble; "" where there is none

  [[nodiscard]] bool hasTrouble() const;
  /// One sentence: why does this shop not send?
  [[nodiscard]] std::string answer() const;

  [[nodiscard]] std::string text() const;
  [[nodiscard]] std::string html() const;
};

}  // namespace karvel
