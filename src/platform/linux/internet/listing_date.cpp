#include "platform/linux/internet/listing_date.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <string>

#include "text/strings.h"

namespace karvel {
namespace {

/// One sign in UTF-8, code page 932 and EUC-JP.
using Sign = std::array<std::string_view, 3>;

constexpr Sign kYearSign = {"年", "\x94\x4E", "\xC7\xAF"};
constexpr Sign kMonthSign = {"月", "\x8C\x8E", "\xB7\xEE"};
constexpr Sign kDaySign = {"日", "\x93\xFA", "\xC6\xFC"};
constexpr Sign kHourSign = {"時", "\x8E\x9E", "\xBB\xFE"};
constexpr Sign kMinuteSign = {"分", "\x95\xAA", "\xCA\xAC"};
constexpr Sign kSecondSign = {"秒", "\x95\x62", "\xC9\xC3"};
constexpr Sign kMorningSign = {"午前", "\x8C\xDF\x91\x4F", "\xB8\xE1\xC1\xB0"};
constexpr Sign kAfternoonSign = {"午後", "\x8C\xDF\x8C\xE3", "\xB8\xE1\xB8\xE5"};

struct Era {
  Sign sign;
  int yearBefore;
};

constexpr Era kEras[] = {{{"令和", "\x97\xDF\x98\x61", "\xCE\xE1\xCF\xC2"}, 2018},
                         {{"平成", "\x95\xBD\x90\xAC", "\xCA\xBF\xC0\xAE"}, 1988},
                         {{"昭和", "\x8F\xBA\x98\x61", "\xBE\xBC\xCF\xC2"}, 1925}};
constexpr Sign kFirstYearOfEra = {"元", "\x8C\xB3", "\xB8\xB5"};

constexpr std::array<std::string_view, 12> kMonthNames = {"jan", "feb", "mar", "apr", "may", "jun",
                                                          "jul", "aug", "sep", "oct", "nov", "dec"};
constexpr std::array<std::string_view, 7> kDayNames = {"mon", "tue", "wed", "thu",
                                                       "fri", "sat", "sun"};

struct Day {
  int year = 0;  ///< 0: not told
  int month = 0;
  int day = 0;
  /// The year stands in front like a word of its own, so that it may be the size instead.
  bool yearIsWord = false;
};

struct Time {
  int hour = 0;
  int minute = 0;
  int second = 0;
  bool exact = false;  ///< the seconds are told
};

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

/// Reads a text from the front. A step that does not find what it looks for takes nothing.
class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  [[nodiscard]] std::string_view rest() const { return text_; }
  [[nodiscard]] bool atBlank() const { return isBlank(peek()); }

  bool take(std::string_view expected) {
    if (!text_.starts_with(expected)) return false;
    text_.remove_prefix(expected.size());
    return true;
  }

  bool take(const Sign& sign) {
    return std::any_of(sign.begin(), sign.end(), [this](std::string_view s) { return take(s); });
  }

  /// The first of `characters` that stands here; NUL for none.
  char takeAnyOf(std::string_view characters) {
    const char c = peek();
    if (c == '\0' || !contains(characters, {&c, 1})) return '\0';
    text_.remove_prefix(1);
    return c;
  }

  /// The number of blanks and tabs taken.
  std::size_t takeBlanks() {
    const std::size_t count = std::min(text_.find_first_not_of(" \t"), text_.size());
    text_.remove_prefix(count);
    return count;
  }

  /// A number of `least` to `most` digits that no further digit follows.
  std::optional<int> takeNumber(std::size_t least, std::size_t most) {
    const std::size_t length = digits();
    if (length < least || length > most) return std::nullopt;
    int value = 0;
    for (const char c : text_.substr(0, length)) value = value * 10 + (c - '0');
    text_.remove_prefix(length);
    return value;
  }

  void takeDigits() { text_.remove_prefix(digits()); }

  /// The place, from 1, of the name whose three letters stand here.
  template <std::size_t N>
  std::optional<int> takeName(const std::array<std::string_view, N>& names) {
    const auto found = std::find(names.begin(), names.end(), asciiLower(text_.substr(0, 3)));
    if (found == names.end()) return std::nullopt;
    text_.remove_prefix(3);
    return static_cast<int>(found - names.begin()) + 1;
  }

 private:
  static bool isBlank(char c) { return c == ' ' || c == '\t'; }
  [[nodiscard]] char peek() const { return text_.empty() ? '\0' : text_.front(); }
  [[nodiscard]] std::size_t digits() const {
    const auto* const end = std::find_if_not(text_.begin(), text_.end(), isDigit);
    return static_cast<std::size_t>(end - text_.begin());
  }

  std::string_view text_;
};

constexpr int kFirstYear = 1601;
constexpr int kLastYear = 9999;
constexpr int kLastMonth = 12;
constexpr int kLastDay = 31;

bool exists(const Day& day) {
  // The library's date keeps the lowest bits of a larger number.
  if (day.year < kFirstYear || day.year > kLastYear || day.month > kLastMonth ||
      day.day > kLastDay) {
    return false;
  }
  return (std::chrono::year{day.year} / day.month / day.day).ok();
}

/// Two digits are of 1970 to 2069; three count from 1900.
int fullYear(int year) {
  constexpr int kFirstOfLastCentury = 70;
  if (year >= 1000) return year;
  return year + (year < kFirstOfLastCentury ? 2000 : 1900);
}

/// "2025-11-06", "06.11.2025", "11-06-96": three numbers, in the order that the values or, where
/// they leave it open, the separator tells. "11/ 6", "09-26": month and day.
std::optional<Day> takeNumericDay(Reader& reader) {
  const auto first = reader.takeNumber(1, 4);
  const char separator = first ? reader.takeAnyOf("-/.") : '\0';
  if (separator == '\0') return std::nullopt;
  reader.takeBlanks();
  const auto second = reader.takeNumber(1, 2);
  if (!second) return std::nullopt;
  const bool dayFirst = *first > kLastMonth || separator == '.';
  if (!reader.take({&separator, 1})) {
    return dayFirst ? Day{0, *second, *first} : Day{0, *first, *second};
  }
  const auto third = reader.takeNumber(1, 4);
  if (!third) return std::nullopt;
  if (*first > kLastDay) return Day{fullYear(*first), *second, *third};
  if (dayFirst) return Day{fullYear(*third), *second, *first};
  return Day{fullYear(*third), *first, *second};
}

/// "令和7年", "平成元年": the year; 0 when no name of an era stands here.
int takeYearOfEra(Reader& reader) {
  for (const Era& era : kEras) {
    if (!reader.take(era.sign)) continue;
    reader.takeBlanks();
    const auto year = reader.take(kFirstYearOfEra) ? 1 : reader.takeNumber(1, 2);
    return year && reader.take(kYearSign) ? era.yearBefore + *year : 0;
  }
  return 0;
}

/// "11月 6日", with or without the year in front.
std::optional<Day> takeJapaneseDay(Reader& reader) {
  Day day;
  day.year = takeYearOfEra(reader);
  if (day.year != 0) reader.takeBlanks();
  auto number = reader.takeNumber(1, 4);
  if (!number) return std::nullopt;
  const bool yearSign = reader.take(kYearSign);
  if (yearSign || (*number >= kFirstYear && reader.atBlank())) {
    reader.takeBlanks();
    day.year = *number;
    day.yearIsWord = !yearSign;
    number = reader.takeNumber(1, 2);
  }
  if (!number || !reader.take(kMonthSign)) return std::nullopt;
  day.month = *number;
  reader.takeBlanks();
  number = reader.takeNumber(1, 2);
  if (!number) return std::nullopt;
  reader.take(kDaySign);
  day.day = *number;
  return day;
}

/// "Nov  6", "Nov 06,", "6 Nov", "06-nov-99", "2025 Nov 6", "2025-Nov-06".
std::optional<Day> takeEnglishDay(Reader& reader) {
  Day day;
  if (reader.takeName(kDayNames)) {
    reader.take(",");
    reader.takeBlanks();
  }
  const auto number = reader.takeNumber(1, 4);
  if (number) {
    if (*number == 0 || (*number > kLastDay && *number < kFirstYear)) return std::nullopt;
    (*number > kLastDay ? day.year : day.day) = *number;
    const bool dash = reader.take("-");
    if (dash == (reader.takeBlanks() > 0)) return std::nullopt;
    day.yearIsWord = day.year != 0 && !dash;
  }
  const auto month = reader.takeName(kMonthNames);
  if (!month) return std::nullopt;
  day.month = *month;
  if (day.day == 0) {
    if (!reader.take("-")) reader.takeBlanks();
    day.day = reader.takeNumber(1, 2).value_or(0);
  } else if (reader.take("-")) {
    const auto year = reader.takeNumber(2, 4);
    if (!year) return std::nullopt;
    day.year = fullYear(*year);
  }
  return day;
}

/// "14:21", "14:21:30.123", "14時21分", "午後 2時21分".
std::optional<Time> takeTime(Reader& reader) {
  Time time;
  const bool morning = reader.take(kMorningSign);
  const bool afternoon = reader.take(kAfternoonSign);
  if (morning || afternoon) reader.takeBlanks();
  const auto hour = reader.takeNumber(1, 2);
  const bool signs = hour && reader.take(kHourSign);
  if (!hour || (!signs && !reader.take(":"))) return std::nullopt;
  const auto minute = reader.takeNumber(1, 2);
  if (!minute || (signs && !reader.take(kMinuteSign))) return std::nullopt;
  time.hour = *hour;
  time.minute = *minute;
  if (signs ? isDigit(reader.rest().empty() ? '\0' : reader.rest().front()) : reader.take(":")) {
    const auto second = reader.takeNumber(1, 2);
    if (!second || (signs && !reader.take(kSecondSign))) return std::nullopt;
    time.second = *second;
    time.exact = true;
    if (reader.takeAnyOf(".,") != '\0') reader.takeDigits();
  }
  if (time.hour > 23 || time.minute > 59 || time.second > 60) return std::nullopt;
  if (afternoon && time.hour < 12) time.hour += 12;
  if (morning && time.hour == 12) time.hour = 0;
  time.second = std::min(time.second, 59);
  return time;
}

DateTime joined(const Day& day, const Time& time) {
  return {day.year, day.month, day.day, time.hour, time.minute, time.second};
}

std::chrono::sys_time<std::chrono::minutes> minuteOf(const DateTime& t) {
  const auto day = std::chrono::year{t.year} / t.month / t.day;
  return std::chrono::sys_days(day) + std::chrono::hours{t.hour} + std::chrono::minutes{t.minute};
}

/// The latest date of that month, day and time that is no more than a day ahead of `now`.
std::optional<DateTime> latest(Day day, const Time& time, const DateTime& now) {
  constexpr int kLongestLeapGap = 8;  // years
  const auto limit = minuteOf(now) + std::chrono::days{1};
  for (day.year = now.year + 1; day.year >= now.year - kLongestLeapGap; --day.year) {
    const DateTime candidate = joined(day, time);
    if (exists(day) && minuteOf(candidate) <= limit) return candidate;
  }
  return std::nullopt;
}

/// "+0900", "Z", or the letters of a zone when a year follows them.
void takeZone(Reader& reader) {
  Reader ahead = reader;
  if (reader.take("Z")) return;
  ahead.takeBlanks();
  if (ahead.takeAnyOf("+-") != '\0' && ahead.takeNumber(4, 4)) reader = ahead;
}

/// The year behind an exact time: "14:21:30 2025", "14:21:30 JST 2025".
void takeLateYear(Reader& reader, Day& day) {
  Reader ahead = reader;
  ahead.takeBlanks();
  while (ahead.takeAnyOf("ABCDEFGHIJKLMNOPQRSTUVWXYZ") != '\0') {
  }
  ahead.takeBlanks();
  const auto year = ahead.takeNumber(4, 4);
  if (!year || !ahead.atBlank()) return;
  day.year = *year;
  reader = ahead;
}

/// What follows a day whose year stands in front of it or in it: a time or nothing.
std::optional<DateTime> withTime(const Day& day, Reader& reader) {
  Reader ahead = reader;
  if (!ahead.take("T")) ahead.takeBlanks();
  const Reader behindBlanks = ahead;
  const auto time = takeTime(ahead);
  if (day.yearIsWord && (time || Reader(behindBlanks).takeNumber(4, 4))) return std::nullopt;
  if (time) {
    reader = ahead;
    takeZone(reader);
  }
  return joined(day, time.value_or(Time{}));
}

/// What follows a day without a year: a time or the year.
std::optional<DateTime> withTimeOrYear(Day day, Reader& reader, const DateTime& now) {
  const bool comma = reader.take(",");
  const std::size_t blanks = reader.takeBlanks();
  Reader ahead = reader;
  if (const auto time = takeTime(ahead)) {
    reader = ahead;
    if (time->exact) takeLateYear(reader, day);
    return day.year == 0 ? latest(day, *time, now) : joined(day, *time);
  }
  day.year = takeYearOfEra(reader);
  if (day.year == 0) day.year = reader.takeNumber(4, 4).value_or(0);
  if (day.year == 0) return std::nullopt;
  reader.take(kYearSign);
  if (comma) return withTime(day, reader);
  const bool leftAligned = blanks == 1 && reader.rest().starts_with("  ");
  if (leftAligned) reader.take(" ");
  return joined(day, {});
}

/// The hour of a 12-hour clock behind "AM" or "PM", or of a 24-hour clock without either.
std::optional<int> hourOfDay(int hour, Reader& reader) {
  Reader ahead = reader;
  ahead.takeBlanks();
  const char half = ahead.takeAnyOf("AaPp");
  if (half == '\0') return hour;
  ahead.takeAnyOf("Mm");
  if (!ahead.atBlank()) return hour;
  if (hour < 1 || hour > 12) return std::nullopt;
  reader = ahead;
  return hour % 12 + (half == 'P' || half == 'p' ? 12 : 0);
}

}  // namespace

std::optional<DateTime> takeUnixDate(std::string_view& text, const DateTime& now) {
  for (auto* const takeDay : {&takeNumericDay, &takeJapaneseDay, &takeEnglishDay}) {
    Reader reader(text);
    const auto day = takeDay(reader);
    if (!day) continue;
    const auto date = day->year == 0 ? withTimeOrYear(*day, reader, now) : withTime(*day, reader);
    if (!date || !exists({date->year, date->month, date->day})) continue;
    if (!reader.rest().empty() && !reader.atBlank()) continue;
    reader.takeAnyOf(" \t");
    text = reader.rest();
    return date;
  }
  return std::nullopt;
}

std::optional<DateTime> takeDosDate(std::string_view& text) {
  Reader reader(text);
  const auto day = takeNumericDay(reader);
  if (!day || !exists(*day)) return std::nullopt;
  Reader ahead = reader;
  ahead.takeBlanks();
  auto time = takeTime(ahead);
  if (time) {
    const auto hour = hourOfDay(time->hour, ahead);
    if (!hour) return std::nullopt;
    time->hour = *hour;
    reader = ahead;
  }
  if (!reader.atBlank()) return std::nullopt;
  text = reader.rest();
  return joined(*day, time.value_or(Time{}));
}

}  // namespace karvel
