#pragma once

#include <string>
#include <string_view>

namespace karvel {

/// FTP servers do not say in which encoding they write. True when `bytes` hold more than ASCII and
/// read as UTF-8. A text that is code page 932 just as well (half-width katakana can be) counts as
/// that, unless its UTF-8 has characters of East Asia.
bool isServerUtf8(std::string_view bytes);

/// A text of a server as UTF-8, from either encoding. Kana whose voiced mark is a character of its
/// own, as some file systems keep them, are composed ("か" and U+3099 to "が").
std::string textOfServer(std::string_view bytes);

}  // namespace karvel
