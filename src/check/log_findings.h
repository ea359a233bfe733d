#pragma once

#include <string>
#include <vector>

#include "check/finding.h"
#include "check/shop.h"

namespace karvel {

/// The last lines of the run log, at most 200, from as many days as they come from,
/// without a password.
[[nodiscard]] std::vector<std::string> lastLogLines(Shop& shop);

/// What those lines say of the last runs.
void findRuns(const Shop& shop, const std::vector<std::string>& lines, Findings& findings);

}  // namespace karvel
