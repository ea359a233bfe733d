#pragma once

#include <string_view>

namespace karvel {

/// True when a whole name (UTF-8) matches a pattern in which "*" stands for any characters, also
/// none, and "?" for exactly one. ASCII letters match in either case; nothing else is special.
bool matchesWildcard(std::string_view name, std::string_view pattern);

}  // namespace karvel
