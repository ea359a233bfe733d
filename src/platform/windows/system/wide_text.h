#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace karvel {

/// UTF-8 as the UTF-16 of the wide Windows functions, and back. An ill-formed sequence becomes
/// U+FFFD.
std::wstring toWide(std::string_view utf8);
std::string fromWide(std::wstring_view wide);

/// In the code page that byte-oriented Windows functions take for a file's name, the system's own;
/// empty when that lacks one of the characters.
std::optional<std::string> toAnsi(std::string_view utf8);

}  // namespace karvel
