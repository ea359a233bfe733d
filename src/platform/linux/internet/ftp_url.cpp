#include "platform/linux/internet/ftp_url.h"

#include <arpa/inet.h>

#include <algorithm>

#include "text/code_page.h"

namespace karvel {
namespace {

bool isAsciiLetterOrDigit(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

bool isHostCharacter(char c) {
  const bool ascii = static_cast<unsigned char>(c) < 0x80;
  return !ascii || isAsciiLetterOrDigit(c) || c == '-' || c == '.' || c == '_';
}

bool isIpv6Address(const std::string& host) {
  in6_addr address{};
  return inet_pton(AF_INET6, host.c_str(), &address) == 1;
}

}  // namespace

std::optional<std::string> urlHost(std::string_view host) {
  std::string text = fromCodePage932(host);
  if (isIpv6Address(text)) return "[" + text + "]";
  if (text.empty() || !std::all_of(text.begin(), text.end(), isHostCharacter)) return std::nullopt;
  return text;
}

std::string urlPath(std::string_view name) {
  constexpr std::string_view kHexDigits = "0123456789ABCDEF";
  std::string path;
  for (const char c : name) {
    if (isAsciiLetterOrDigit(c)) {
      path.push_back(c);
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    path.append({'%', kHexDigits[byte >> 4U], kHexDigits[byte & 0x0FU]});
  }
  return path;
}

}  // namespace karvel
