#include "platform/linux/internet/ftp_listing.h"

#include <algorithm>

#include "platform/linux/internet/listing_date.h"
#include "text/server_text.h"
#include "text/strings.h"

namespace karvel {
namespace {

constexpr std::size_t kLongestName = 259;   ///< bytes
constexpr std::size_t kLongestLine = 4096;  ///< bytes; longer ones are no entries

bool isControl(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

/// No separator and no control character; the second byte of a character is neither.
bool isPlainName(std::string_view name) {
  while (!name.empty()) {
    const std::size_t length = characterLength932(name);
    const char c = name.front();
    if (length == 1 && (isControl(c) || c == '/' || c == '\\')) return false;
    name.remove_prefix(length);
  }
  return true;
}

/// Stores the name as code page 932; false when it cannot be one.
bool setName(ListedEntry& entry, std::string_view bytes) {
  const std::string name = codePage932OfServerText(bytes);
  if (name.empty() || !isPlainName(name)) return false;
  entry.name = cutBytes932(name, kLongestName);
  if (name != bytes) entry.writtenName = bytes;
  return true;
}

/// Takes the next word and the blanks before it off the front of `text`.
std::string_view takeWord(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  const std::string_view word = text.substr(0, text.find(' '));
  text.remove_prefix(word.size());
  return word;
}

/// A whole number of bytes; one that no file can have counts as the largest number.
std::optional<std::uint64_t> sizeOf(std::string_view digits) {
  if (digits.empty()) return std::nullopt;
  std::uint64_t size = 0;
  for (const char c : digits) {
    if (c < '0' || c > '9') return std::nullopt;
    const auto digit = static_cast<std::uint64_t>(c - '0');
    size = size > (UINT64_MAX - digit) / 10 ? UINT64_MAX : size * 10 + digit;
  }
  return size;
}

/// "drwxr-xr-x" and the like, with a sign for further rights or without.
bool isModeWord(std::string_view word) {
  constexpr std::string_view kTypes = "-dlbcpsD";
  constexpr std::string_view kRights = "-rwxsStTlL";
  constexpr std::size_t kLength = 10;
  return word.size() >= kLength && word.size() <= kLength + 1 &&
         contains(kTypes, word.substr(0, 1)) &&
         word.substr(1, kLength - 1).find_first_not_of(kRights) == std::string_view::npos;
}

/// Stores size, time and the rest of the line: the first number that a date follows is the size,
/// however many words (links, owner, group) stand before it.
std::optional<std::string_view> takeSizeAndTime(std::string_view rest, const DateTime& now,
                                                ListedEntry& entry) {
  constexpr int kMostWords = 12;
  for (int i = 0; i < kMostWords && !rest.empty(); ++i) {
    const auto size = sizeOf(takeWord(rest));
    if (!size) continue;
    std::string_view name = rest;
    name.remove_prefix(std::min(name.find_first_not_of(' '), name.size()));
    const auto time = takeUnixDate(name, now);
    if (!time) continue;
    entry.size = *size;
    entry.time = *time;
    return name;
  }
  return std::nullopt;
}

std::optional<ListedEntry> parseUnixLine(std::string_view line, const DateTime& now) {
  constexpr std::string_view kArrow = " -> ";
  const std::string_view mode = takeWord(line);
  if (!isModeWord(mode)) return std::nullopt;
  ListedEntry entry;
  auto name = takeSizeAndTime(line, now, entry);
  if (!name) return std::nullopt;
  entry.folder = mode.front() == 'd';
  const auto arrow = mode.front() == 'l' ? name->find(kArrow) : std::string_view::npos;
  if (arrow != std::string_view::npos) {
    entry.folder = name->back() == '/';
    name = name->substr(0, arrow);
  }
  if (!setName(entry, *name)) return std::nullopt;
  return entry;
}

std::optional<ListedEntry> parseDosLine(std::string_view line) {
  constexpr std::string_view kFolderMark = "<DIR>";
  constexpr std::size_t kBlanksBehindMark = 10;
  ListedEntry entry;
  const auto time = takeDosDate(line);
  if (!time) return std::nullopt;
  const std::string_view mark = takeWord(line);
  entry.time = *time;
  entry.folder = mark == kFolderMark;
  const auto size = entry.folder ? 0 : sizeOf(mark);
  if (!size) return std::nullopt;
  entry.size = *size;
  // A size ends in its column with one blank behind it, a folder's mark begins in it.
  const std::size_t blanks = std::min(line.find_first_not_of(' '), line.size());
  line.remove_prefix(std::min(blanks, entry.folder ? kBlanksBehindMark : 1));
  if (!setName(entry, line)) return std::nullopt;
  return entry;
}

}  // namespace

std::optional<ListedEntry> parseListingLine(std::string_view line, const DateTime& now) {
  if (line.size() > kLongestLine) return std::nullopt;
  auto entry = parseUnixLine(line, now);
  return entry ? entry : parseDosLine(line);
}

std::optional<ListedEntry> FtpListing::next() {
  while (position_ < text_.size()) {
    const std::size_t end = std::min(text_.find('\n', position_), text_.size());
    std::string_view line(text_.data() + position_, end - position_);
    position_ = end + 1;
    while (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (auto entry = parseListingLine(line, now_)) return entry;
  }
  return std::nullopt;
}

}  // namespace karvel
