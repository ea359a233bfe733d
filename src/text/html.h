#pragma once

#include <string>
#include <string_view>

namespace karvel {

/// A text as it is written into a page, in attributes, too.
std::string htmlText(std::string_view text);

}  // namespace karvel
