#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace karvel {

/// A host as an FTP address has it (an IPv6 address in brackets); empty when the text can be no
/// host at all. The bytes are code page 932.
std::optional<std::string> urlHost(std::string_view host);

/// A remote name as the path of an FTP address: every byte that could mean something there is
/// escaped, so that the server gets the name byte for byte.
std::string urlPath(std::string_view name);

}  // namespace karvel
