#pragma once

#include <string>
#include <string_view>

namespace karvel {

/// UTF-8 as the UTF-16 of the wide Windows functions, and back. An ill-formed sequence becomes
/// U+FFFD.
std::wstring toWide(std::string_view utf8);
std::string fromWide(std::wstring_view wide);

/// A text in the system's own ANSI code page, as the byte-oriented Windows functions give it.
std::string fromAnsi(std::string_view bytes);

}  // namespace karvel
