#include "check/quotation.h"

#include <set>

#include "text/code_page.h"
#include "text/strings.h"

namespace karvel {
namespace {

constexpr std::string_view kMask = "****";
constexpr std::size_t kShortestBeginning = 3;  ///< of a password, that tells something

/// As the settings have it, and as it has been sent, in the bytes of either encoding.
std::set<std::string> passwords(Shop& shop) {
  const std::string stored = shop.settings.read(own::kPassword);
  const std::string sent = shop.internet.account.password.value_or("");
  std::set<std::string> all{stored, std::string(trimmed(stored)), sent, fromCodePage932(sent)};
  all.erase("");
  return all;
}

void maskAll(std::string& text, const std::string& password) {
  for (auto at = text.find(password); at != std::string::npos;
       at = text.find(password, at + kMask.size())) {
    text.replace(at, password.size(), kMask);
  }
}

/// The beginning of a password at the end of a text that goes on no further.
void maskCutOne(std::string& text, const std::string& password) {
  for (std::size_t count = characterCount(password); count-- > kShortestBeginning;) {
    const std::string_view beginning = firstCharacters(password, count);
    if (!text.ends_with(beginning)) continue;
    text.replace(text.size() - beginning.size(), beginning.size(), kMask);
    return;
  }
}

}  // namespace

std::string quoted(Shop& shop, std::string words) {
  const bool cut = characterCount(words) == FtpForm::kErrorTextWidth;
  const auto secrets = passwords(shop);
  // From the last: a longer password comes after one that it begins with.
  for (auto each = secrets.rbegin(); each != secrets.rend(); ++each) maskAll(words, *each);
  for (const std::string& each : secrets) {
    if (cut) maskCutOne(words, each);
  }
  return words;
}

std::string quotedLogLine(Shop& shop, const std::string& line) {
  constexpr std::string_view kFailure = " NG ";
  const auto failure = line.find(kFailure);
  if (failure == std::string::npos) return line;
  const auto words = failure + kFailure.size();
  return line.substr(0, words) + quoted(shop, line.substr(words));
}

}  // namespace karvel
