#include "fakes/fake_profile.h"

namespace karvel {
namespace {

constexpr const char* kLineEnd = "\r\n";

/// Where a key's line stands in the text; the end of its section without one.
struct Place {
  std::size_t begin = 0;
  std::size_t length = 0;  ///< without the line end; 0 when the key is missing
};

Place find(const std::string& text, const std::string& section, const std::string& key) {
  const std::string head = "[" + section + "]" + kLineEnd;
  const auto start = text.find(head);
  if (start == std::string::npos) return {text.size()};
  std::size_t line = start + head.size();
  while (line < text.size() && text[line] != '[') {
    const auto end = text.find(kLineEnd, line);
    if (text.compare(line, key.size() + 1, key + "=") == 0) return {line, end - line};
    line = end + 2;
  }
  return {line};
}

}  // namespace

std::string FakeProfile::valueIn(const std::string& text, const std::string& section,
                                 const std::string& key) {
  const Place place = find(text, section, key);
  if (place.length == 0) return "";
  const std::string value = text.substr(place.begin, place.length).substr(key.size() + 1);
  const bool quoted = value.size() >= 2 && value.front() == '"' && value.back() == '"';
  return quoted ? value.substr(1, value.size() - 2) : value;
}

std::string FakeProfile::withValue(std::string text, const std::string& section,
                                   const std::string& key, const std::string& value) {
  const std::string head = "[" + section + "]" + kLineEnd;
  if (text.find(head) == std::string::npos) text += head;
  const Place place = find(text, section, key);
  const std::string line = key + "=" + value;
  return text.replace(place.begin, place.length, place.length != 0 ? line : line + kLineEnd);
}

}  // namespace karvel
