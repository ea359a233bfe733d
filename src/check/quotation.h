#pragma once

#include <string>

#include "check/shop.h"

namespace karvel {

/// Other people's words for a report: a server may repeat the password, which becomes asterisks. To
/// be asked before the words are shortened in any way. The program's own words do not go through
/// this: asterisks in the place of a known word would tell the password.
[[nodiscard]] std::string quoted(Shop& shop, std::string words);

/// A line of the log, of which only the text of a failure is a server's.
[[nodiscard]] std::string quotedLogLine(Shop& shop, const std::string& line);

}  // namespace karvel
