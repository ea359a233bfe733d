#pragma once

#include <string>
#include <utility>
#include <vector>

namespace karvel {

/// Name and value of what may matter for how the tests end on this machine.
std::vector<std::pair<std::string, std::string>> machineFacts();

}  // namespace karvel
