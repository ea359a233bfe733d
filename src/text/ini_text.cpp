#include "text/ini_text.h"

#include <optional>

#include "text/code_page.h"

namespace karvel {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";  // of UTF-8; some editors add it

/// One line: its place in the text, and its content without the line end.
struct Line {
  std::size_t begin;
  std::size_t end;  ///< past its line end
  std::string_view content;
};

class LineReader {
 public:
  explicit LineReader(std::string_view text)
      : text_(text), position_(text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0) {}

  std::optional<Line> next() {
    if (position_ >= text_.size()) return std::nullopt;
    const std::size_t begin = position_;
    std::size_t end = text_.find_first_of(kLineEnd, begin);
    if (end == std::string_view::npos) end = text_.size();
    position_ = end + lineEndLength(end);
    return Line{begin, position_, text_.substr(begin, end - begin)};
  }

 private:
  [[nodiscard]] std::size_t lineEndLength(std::size_t at) const {
    if (at == text_.size()) return 0;
    return text_.substr(at, kLineEnd.size()) == kLineEnd ? 2 : 1;
  }

  std::string_view text_;
  std::size_t position_;
};

std::string_view withoutBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Equality ignoring ASCII case, character by character: the second byte of a double-byte character
/// may look like a letter, but has no case.
bool sameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (isLeadByte932(a[i]) && i + 1 < a.size()) {
      if (a[i] != b[i] || a[i + 1] != b[i + 1]) return false;
      ++i;
    } else if (lower(a[i]) != lower(b[i])) {
      return false;
    }
  }
  return true;
}

/// Position of the first "]" that is not the second byte of a double-byte character.
std::size_t closingBracket(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (isLeadByte932(text[i])) {
      ++i;
    } else if (text[i] == ']') {
      return i;
    }
  }
  return std::string_view::npos;
}

std::optional<std::string_view> sectionOf(std::string_view line) {
  const std::string_view text = withoutBlanks(line);
  if (text.empty() || text.front() != '[') return std::nullopt;
  const auto end = closingBracket(text);
  if (end == std::string_view::npos) return std::nullopt;
  return withoutBlanks(text.substr(1, end - 1));
}

struct Entry {
  std::string_view key;
  std::string_view value;
};

std::optional<Entry> entryOf(std::string_view line) {
  const auto equals = line.find('=');
  if (equals == std::string_view::npos) return std::nullopt;
  const std::string_view key = withoutBlanks(line.substr(0, equals));
  if (key.empty() || key.front() == ';') return std::nullopt;
  return Entry{key, withoutBlanks(line.substr(equals + 1))};
}

std::string_view unquoted(std::string_view value) {
  if (value.size() < 2) return value;
  const char quote = value.front();
  const bool quoted = (quote == '"' || quote == '\'') && value.back() == quote;
  return quoted ? value.substr(1, value.size() - 2) : value;
}

/// Where a key is, or where it would be inserted.
struct Place {
  bool sectionFound = false;
  std::size_t insertAt = 0;  ///< after the section's last line that is not blank
  std::optional<Line> line;  ///< the key's line
};

Place findKey(std::string_view text, std::string_view section, std::string_view key) {
  const std::string_view wantedSection = withoutBlanks(section);
  const std::string_view wantedKey = withoutBlanks(key);
  Place place;
  LineReader lines(text);
  while (const auto line = lines.next()) {
    if (const auto name = sectionOf(line->content)) {
      if (place.sectionFound) break;
      place.sectionFound = sameName(*name, wantedSection);
      place.insertAt = line->end;
      continue;
    }
    if (!place.sectionFound) continue;
    const auto entry = entryOf(line->content);
    if (entry && sameName(entry->key, wantedKey)) {
      place.line = line;
      break;
    }
    if (!withoutBlanks(line->content).empty()) place.insertAt = line->end;
  }
  return place;
}

bool endsWithLineEnd(std::string_view text) {
  return text.empty() || text.back() == '\n' || text.back() == '\r';
}

}  // namespace

std::string iniValue(std::string_view text, std::string_view section, std::string_view key) {
  const Place place = findKey(text, section, key);
  if (!place.line) return {};
  return std::string(unquoted(entryOf(place.line->content)->value));
}

void eachIniLine(std::string_view text, const std::function<void(const IniLine&)>& take) {
  std::string_view section;
  LineReader lines(text);
  while (const auto line = lines.next()) {
    if (const auto name = sectionOf(line->content)) {
      section = *name;
      take({section, {}, {}});
    } else if (const auto entry = entryOf(line->content)) {
      take({section, entry->key, unquoted(entry->value)});
    }
  }
}

std::string iniWithValue(std::string_view text, std::string_view section, std::string_view key,
                         std::string_view value) {
  const Place place = findKey(text, section, key);
  std::string result;
  result.reserve(text.size() + section.size() + key.size() + value.size() + 16);
  if (place.line) {
    const std::size_t valueAt = place.line->begin + place.line->content.find('=') + 1;
    const std::size_t lineEndAt = place.line->begin + place.line->content.size();
    return result.append(text.substr(0, valueAt)).append(value).append(text.substr(lineEndAt));
  }

  const std::size_t at = place.sectionFound ? place.insertAt : text.size();
  result.append(text.substr(0, at));
  if (!endsWithLineEnd(result)) result.append(kLineEnd);
  if (!place.sectionFound) result.append("[").append(section).append("]").append(kLineEnd);
  result.append(key).append("=").append(value).append(kLineEnd);
  return result.append(text.substr(at));
}

}  // namespace karvel
