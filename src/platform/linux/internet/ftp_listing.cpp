#include "platform/linux/internet/ftp_listing.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <utility>
#include <vector>

#include "platform/linux/internet/listing_date.h"
#include "text/strings.h"

namespace karvel {
namespace {

constexpr std::size_t kLongestLine = 4096;  ///< bytes; longer ones are no entries
constexpr std::string_view kBlanks = " \t";
constexpr DateTime kUnknownTime{1601, 1, 1, 0, 0, 0};

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isNumber(std::string_view word) {
  return !word.empty() && std::all_of(word.begin(), word.end(), isDigit);
}

bool isControl(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

std::string_view withoutLeadingBlanks(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  return text;
}

/// Takes the next word and the blanks before it off the front of `text`.
std::string_view takeWord(std::string_view& text) {
  text = withoutLeadingBlanks(text);
  const std::string_view word = text.substr(0, text.find_first_of(kBlanks));
  text.remove_prefix(word.size());
  return word;
}

/// Behind a date or a size the name begins after one blank; further ones are its own.
std::string_view withoutOneBlank(std::string_view text) {
  return text.substr(!text.empty() && contains(kBlanks, text.substr(0, 1)) ? 1 : 0);
}

std::optional<Internet::FindData> named(Internet::FindData entry, std::string_view name) {
  if (name.ends_with('/')) name.remove_suffix(1);
  if (withoutLeadingBlanks(name).empty()) return std::nullopt;
  if (std::any_of(name.begin(), name.end(), isControl)) return std::nullopt;
  entry.name = name;
  return entry;
}

/// A number of bytes: with commas or without, rounded to a unit ("34.5k"), or with the group's name
/// run into it. One that no file can have counts as the largest number.
std::optional<std::uint64_t> sizeOf(std::string_view word) {
  constexpr std::string_view kDigits = "0123456789";
  constexpr std::string_view kUnits = "kmgt";
  if (word.empty()) return std::nullopt;
  if (!isDigit(word.front())) word.remove_prefix(word.find_last_not_of(kDigits) + 1);
  std::uint64_t size = 0;
  std::size_t i = 0;
  for (; i < word.size() && (isDigit(word[i]) || (i > 0 && word[i] == ',')); ++i) {
    if (word[i] == ',') continue;
    const auto digit = static_cast<std::uint64_t>(word[i] - '0');
    size = size > (UINT64_MAX - digit) / 10 ? UINT64_MAX : size * 10 + digit;
  }
  if (i == 0 || i == word.size()) return i == 0 ? std::nullopt : std::optional(size);
  if (word[i] == '.') i = std::min(word.find_first_not_of(kDigits, i + 1), word.size());
  const auto unit = kUnits.find(asciiLower(word.substr(i)));
  if (i + 1 != word.size() || unit == std::string_view::npos) return std::nullopt;
  return size << (10 * (unit + 1));
}

// ---- Unix ----

DateTime dateTimeOfUnix(std::uint64_t seconds) {
  using namespace std::chrono;
  constexpr std::uint64_t kLatest = 253402300799;  // the end of the year 9999
  if (seconds > kLatest) return kUnknownTime;
  const sys_seconds moment{std::chrono::seconds{seconds}};
  const auto midnight = floor<days>(moment);
  const year_month_day date{midnight};
  const hh_mm_ss time{moment - midnight};
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          static_cast<int>(time.hours().count()),
          static_cast<int>(time.minutes().count()),
          static_cast<int>(time.seconds().count())};
}

/// "drwxr-xr-x" and its relatives: shorter, longer, with a mark of further rights behind it or with
/// the number of links run into it.
bool isModeWord(std::string_view word) {
  constexpr std::string_view kTypes = "-dlbcpsDCMnPaf";
  constexpr std::string_view kRights = "-rwxsStTlL";
  constexpr std::size_t kFewestRights = 3;
  constexpr std::size_t kMostRights = 12;
  if (word.empty() || !contains(kTypes, word.substr(0, 1))) return false;
  word.remove_prefix(1);
  const std::size_t rights = std::min(word.find_first_not_of(kRights), word.size());
  word.remove_prefix(rights);
  word.remove_prefix(std::min(word.find_first_not_of("+.@*"), word.size()));
  return rights >= kFewestRights && rights <= kMostRights && (word.empty() || isNumber(word));
}

/// "[R----F--]": the rights that NetWare puts behind the type of an entry.
bool isNetWareRights(std::string_view word) {
  return word.size() > 2 && word.front() == '[' && word.back() == ']' &&
         word.find_first_not_of("-RWCEAFMSXxr", 1) == word.size() - 1;
}

/// The mode off the front of a line, read over the inode and the blocks that may stand before it;
/// empty when there is none.
std::string_view takeMode(std::string_view& line) {
  constexpr int kMostNumbers = 2;
  std::string_view mode = takeWord(line);
  for (int i = 0; i < kMostNumbers && isNumber(mode); ++i) mode = takeWord(line);
  if (isModeWord(mode)) return mode;
  const std::size_t bracket = mode.find('[');
  std::string_view rest = line;
  const std::string_view rights =
      bracket == std::string_view::npos ? takeWord(rest) : mode.substr(bracket);
  const std::string_view type = mode.substr(0, bracket);
  if ((type != "-" && type != "d") || !isNetWareRights(rights)) return {};
  line = rest;
  return type;
}

/// The words behind a mode, as far as a size and a date can lie.
std::vector<std::string_view> wordsOf(std::string_view line) {
  constexpr std::size_t kMost = 16;
  std::vector<std::string_view> words;
  words.reserve(kMost);
  while (words.size() < kMost) {
    words.push_back(takeWord(line));
    if (words.back().empty()) {
      words.pop_back();
      break;
    }
  }
  return words;
}

std::string_view from(std::string_view word, std::string_view line) {
  return line.substr(static_cast<std::size_t>(word.data() - line.data()));
}

bool isTimeOrYear(std::string_view word) {
  const auto colon = word.find(':');
  if (colon != std::string_view::npos) return colon <= 2 && isNumber(word.substr(0, colon));
  return word.size() == 4 && isNumber(word) && (word.starts_with("19") || word.starts_with("20"));
}

/// What lies behind the mode of a line.
struct Columns {
  std::uint64_t size;
  DateTime time;
  std::string_view name;
};

/// The first size that a date follows, however many words (links, owner, group) stand before it.
std::optional<Columns> columnsWithDate(std::string_view line, bool device, const DateTime& now) {
  const auto words = wordsOf(line);
  for (std::size_t i = 1; i < words.size(); ++i) {
    const auto size = device ? 0 : sizeOf(words[i - 1]);
    if (!size) continue;
    std::string_view name = from(words[i], line);
    if (const auto time = takeUnixDate(name, now)) return Columns{*size, *time, name};
  }
  return std::nullopt;
}

/// The same with a date that cannot be read: two or three words behind a size, the last of them a
/// time or a year; or else three words behind the usual links, owner, group and size.
std::optional<Columns> columnsWithoutDate(std::string_view line) {
  constexpr std::size_t kUsualSize = 3;
  constexpr std::size_t kUsualDate = 3;
  const auto words = wordsOf(line);
  const auto split = [&](std::size_t size, std::size_t date) {
    const std::string_view last = words[size + date];
    const std::string_view name = from(last, line).substr(last.size());
    return Columns{sizeOf(words[size]).value_or(0), kUnknownTime, withoutOneBlank(name)};
  };
  for (const std::size_t date : {std::size_t{3}, std::size_t{2}}) {
    for (std::size_t size = 1; size + date < words.size(); ++size) {
      const bool numbers = isNumber(words[size + 1]) && isNumber(words[size + date - 1]);
      const bool fits = isNumber(words[size]) && !numbers && isTimeOrYear(words[size + date]);
      if (fits) return split(size, date);
    }
  }
  const bool usual = words.size() > kUsualSize + kUsualDate && isNumber(words.front()) &&
                     isNumber(words[kUsualSize]);
  return usual ? std::optional(split(kUsualSize, kUsualDate)) : std::nullopt;
}

/// Without the mark of `ls -F`, and of a link without what it leads to.
std::string_view unmarked(std::string_view name, std::string_view mode) {
  const char type = mode.front();
  if (type == 'l') name = name.substr(0, name.find(" -> "));
  const bool executable = type == '-' && contains(mode, "x");
  const bool marked = (type == 'l' && name.ends_with('@')) ||
                      (type == 's' && name.ends_with('=')) ||
                      (type == 'p' && name.ends_with('|')) || (executable && name.ends_with('*'));
  return name.substr(0, name.size() - (marked ? 1 : 0));
}

std::optional<Internet::FindData> parseUnixLine(std::string_view line, const DateTime& now) {
  const std::string_view mode = takeMode(line);
  if (mode.empty()) return std::nullopt;
  const char type = mode.front();
  auto columns = columnsWithDate(line, type == 'b' || type == 'c', now);
  if (!columns) columns = columnsWithoutDate(line);
  if (!columns) return std::nullopt;
  const bool netWare = mode.size() == 1;
  if (netWare) columns->name = withoutLeadingBlanks(columns->name);
  const bool folder = type == 'd' || type == 'l';
  return named({{}, folder, columns->size, columns->time}, unmarked(columns->name, mode));
}

/// "0100644   500  101   12345    123456789       name": mode, owner, group and size in digits,
/// then the seconds since 1970 or a date.
std::optional<Internet::FindData> parseNumericLine(std::string_view line, const DateTime& now) {
  constexpr std::string_view kTypes = " pc d b - l s   ";  // by the first four bits of a mode
  const std::string_view mode = takeWord(line);
  unsigned bits = 0;
  const auto [end, error] = std::from_chars(mode.begin(), mode.end(), bits, 8);
  const unsigned type = bits >> 12;
  const bool typed = end == mode.end() && type < kTypes.size() && kTypes[type] != ' ';
  if (!mode.starts_with('0') || !typed) return std::nullopt;
  const bool owned = isNumber(takeWord(line)) && isNumber(takeWord(line));
  const std::string_view size = takeWord(line);
  if (!owned || !isNumber(size)) return std::nullopt;
  line = withoutLeadingBlanks(line);
  auto time = takeUnixDate(line, now);
  if (!time) {
    const std::string_view seconds = takeWord(line);
    if (!isNumber(seconds)) return std::nullopt;
    time = dateTimeOfUnix(*sizeOf(seconds));
  }
  const std::string_view letter = kTypes.substr(type, 1);
  const bool folder = letter == "d" || letter == "l";
  return named({{}, folder, *sizeOf(size), *time}, unmarked(withoutLeadingBlanks(line), letter));
}

// ---- MS-DOS ----

/// "11-06-96  02:21PM       <DIR>          name", with the size in place of the mark for a file.
std::optional<Internet::FindData> parseDosLine(std::string_view line) {
  constexpr std::size_t kMarkColumn = 15;  ///< a mark begins in it, a size ends there
  constexpr std::string_view kFolderMarks = "<DIR> <JUNCTION> <SYMLINKD>";
  line = withoutLeadingBlanks(line);
  const auto time = takeDosDate(line);
  if (!time) return std::nullopt;
  const std::string_view mark = takeWord(line);
  if (mark.empty()) return std::nullopt;
  if (isDigit(mark.front())) {
    const auto size = sizeOf(mark);
    if (!size) return std::nullopt;
    return named({{}, false, *size, *time}, withoutOneBlank(line));
  }
  const bool folder = mark.size() > 2 && contains(kFolderMarks, mark);
  if (!folder && mark != "<SYMLINK>") return std::nullopt;
  const std::size_t blanks = line.size() - withoutLeadingBlanks(line).size();
  line.remove_prefix(std::min(blanks, kMarkColumn - mark.size()));
  if (mark != "<DIR>" && line.ends_with(']')) line = line.substr(0, line.rfind(" ["));
  return named({{}, folder, 0, *time}, line);
}

/// OS/2: "36611      A    04-23-103  10:57  name", and " 0 DIR       02-11-103  16:15  name".
std::optional<Internet::FindData> parseOs2Line(std::string_view line) {
  constexpr int kMostWords = 2;
  const std::string_view size = takeWord(line);
  if (!isNumber(size)) return std::nullopt;
  bool folder = false;
  for (int i = 0; i <= kMostWords; ++i) {
    line = withoutLeadingBlanks(line);
    if (const auto time = takeDosDate(line)) {
      return named({{}, folder, sizeOf(size).value_or(0), *time}, withoutLeadingBlanks(line));
    }
    const std::string_view attributes = takeWord(line);
    if (attributes == "DIR") {
      folder = true;
    } else if (attributes.find_first_not_of("RHSA") != std::string_view::npos) {
      return std::nullopt;
    }
  }
  return std::nullopt;
}

// ---- EPLF ----

/// "+i8388621.48594,m825718503,r,s280,<TAB>name": facts, each with a comma behind it.
std::optional<Internet::FindData> parseEplfLine(std::string_view line) {
  const auto tab = line.find('\t');
  if (!line.starts_with('+') || tab == std::string_view::npos) return std::nullopt;
  Internet::FindData entry{{}, false, 0, kUnknownTime};
  std::string_view facts = line.substr(1, tab - 1);
  while (!facts.empty()) {
    const auto comma = facts.find(',');
    if (comma == std::string_view::npos) return std::nullopt;
    const std::string_view fact = facts.substr(0, comma);
    facts.remove_prefix(comma + 1);
    const auto number = sizeOf(fact.substr(std::min<std::size_t>(1, fact.size()))).value_or(0);
    if (fact == "/") entry.folder = true;
    if (fact.starts_with('s')) entry.size = number;
    if (fact.starts_with('m')) entry.time = dateTimeOfUnix(number);
  }
  return named(entry, line.substr(tab + 1));
}

/// Lines that stand in a listing of nothing: blank ones and the sum.
bool saysNothing(std::string_view line) {
  const std::string_view word = takeWord(line);
  return word.empty() || asciiLower(word) == "total" || word == "合計" ||
         word == "\x8D\x87\x8C\x76" || word == "\xB9\xE7\xB7\xD7";
}

}  // namespace

std::optional<Internet::FindData> parseListingLine(std::string_view line, const DateTime& now) {
  if (line.size() > kLongestLine) return std::nullopt;
  if (line.starts_with('+')) return parseEplfLine(line);
  if (auto entry = parseUnixLine(line, now)) return entry;
  if (auto entry = parseNumericLine(line, now)) return entry;
  if (auto entry = parseDosLine(line)) return entry;
  return parseOs2Line(line);
}

std::optional<Internet::FindData> FtpListing::next() {
  while (!blocks_.empty()) {
    const std::string& block = blocks_.front();
    const std::size_t end = block.find('\n', position_);
    const std::size_t room = kLongestLine + 1 - line_.size();
    line_.append(block, position_, std::min(end - position_, room));
    if (end == std::string::npos) {
      blocks_.pop_front();
      position_ = 0;
      continue;
    }
    position_ = end + 1;
    if (auto entry = endLine()) return entry;
  }
  return endLine();
}

std::optional<Internet::FindData> FtpListing::endLine() {
  while (line_.ends_with('\r')) line_.pop_back();
  auto entry = parseListingLine(line_, now_);
  if (entry) {
    anyEntry_ = true;
  } else if (!saysNothing(line_)) {
    strangeLine_ = true;
  }
  line_.clear();
  return entry;
}

}  // namespace karvel
