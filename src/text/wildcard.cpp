#include "text/wildcard.h"

#include "text/strings.h"

namespace karvel {
namespace {

/// Takes what one character of the pattern other than "*" stands for off the front of the name.
bool takeMatch(std::string_view& name, char expected) {
  if (name.empty()) return false;
  if (expected == '?') {
    name.remove_prefix(firstCharacters(name, 1).size());
    return true;
  }
  if (asciiLower(name.substr(0, 1)) != asciiLower({&expected, 1})) return false;
  name.remove_prefix(1);
  return true;
}

}  // namespace

bool matchesWildcard(std::string_view name, std::string_view pattern) {
  // The last "*" seen takes one more byte each time what follows it does not fit; an earlier one
  // never needs to.
  std::string_view afterStar;
  std::string_view nameAtStar;
  while (!name.empty() || !pattern.empty()) {
    if (!pattern.empty() && pattern.front() == '*') {
      pattern.remove_prefix(1);
      afterStar = pattern;
      nameAtStar = name;
      continue;
    }
    if (!pattern.empty() && takeMatch(name, pattern.front())) {
      pattern.remove_prefix(1);
      continue;
    }
    if (nameAtStar.empty()) return false;
    nameAtStar.remove_prefix(firstCharacters(nameAtStar, 1).size());
    name = nameAtStar;
    pattern = afterStar;
  }
  return true;
}

}  // namespace karvel
