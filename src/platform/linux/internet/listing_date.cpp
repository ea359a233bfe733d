#include "platform/linux/internet/listing_date.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <string>
#include <tuple>

#include "text/strings.h"

namespace karvel {
namespace {

using Signs = std::array<std::string_view, 3>;

// The signs of month, day and year in code page 932, EUC-JP and UTF-8.
constexpr Signs kMonthSigns = {"\x8C\x8E", "\xB7\xEE", "\xE6\x9C\x88"};
constexpr Signs kDaySigns = {"\x93\xFA", "\xC6\xFC", "\xE6\x97\xA5"};
constexpr Signs kYearSigns = {"\x94\x4E", "\xC7\xAF", "\xE5\xB9\xB4"};

constexpr std::array<std::string_view, 12> kMonthNames = {"jan", "feb", "mar", "apr", "may", "jun",
                                                          "jul", "aug", "sep", "oct", "nov", "dec"};

struct MonthAndDay {
  int month;
  int day;
};

/// Reads a text from the front; each step takes away what it has recognised and nothing else.
class Reader {
 public:
  explicit Reader(std::string_view& text) : text_(text) {}

  bool take(std::string_view expected) {
    if (text_.substr(0, expected.size()) != expected) return false;
    text_.remove_prefix(expected.size());
    return true;
  }

  bool takeOneOf(const Signs& signs) {
    return std::any_of(signs.begin(), signs.end(),
                       [this](std::string_view sign) { return take(sign); });
  }

  void skipBlanks() { text_.remove_prefix(std::min(text_.find_first_not_of(' '), text_.size())); }

  /// A number of `least` to `most` digits that no further digit follows.
  std::optional<int> takeNumber(std::size_t least, std::size_t most) {
    std::size_t length = 0;
    int value = 0;
    while (length < text_.size() && isDigit(text_[length])) {
      if (length == most) return std::nullopt;
      value = value * 10 + (text_[length] - '0');
      ++length;
    }
    if (length < least) return std::nullopt;
    text_.remove_prefix(length);
    return value;
  }

  std::optional<int> takeMonthName() {
    const std::string name = asciiLower(text_.substr(0, 3));
    for (std::size_t i = 0; i < kMonthNames.size(); ++i) {
      if (name != kMonthNames[i]) continue;
      text_.remove_prefix(3);
      return static_cast<int>(i) + 1;
    }
    return std::nullopt;
  }

  /// True at the end and before a blank, which is taken.
  bool takeEndOfDate() { return text_.empty() || take(" "); }

 private:
  static bool isDigit(char c) { return c >= '0' && c <= '9'; }

  std::string_view& text_;
};

bool isDay(int year, int month, int day) {
  return std::chrono::year_month_day(std::chrono::year{year} / static_cast<unsigned>(month) /
                                     static_cast<unsigned>(day))
      .ok();
}

bool isTime(int hour, int minute) {
  return hour <= 23 && minute <= 59;
}

auto orderOf(const DateTime& t) {
  return std::make_tuple(t.year, t.month, t.day, t.hour, t.minute, t.second);
}

/// The latest date of that month, day and time that does not lie after `now`.
std::optional<DateTime> latestBefore(const DateTime& now, const MonthAndDay& date, int hour,
                                     int minute) {
  constexpr int kLongestLeapGap = 8;  // years
  for (int year = now.year; year >= now.year - kLongestLeapGap; --year) {
    const DateTime candidate{year, date.month, date.day, hour, minute, 0};
    if (isDay(year, date.month, date.day) && orderOf(candidate) <= orderOf(now)) return candidate;
  }
  return std::nullopt;
}

std::optional<MonthAndDay> takeEnglishDay(Reader& reader) {
  auto day = reader.takeNumber(1, 2);  // some servers put the day first
  if (day) reader.skipBlanks();
  const auto month = reader.takeMonthName();
  reader.skipBlanks();
  if (!day) day = reader.takeNumber(1, 2);
  if (!month || !day) return std::nullopt;
  return MonthAndDay{*month, *day};
}

std::optional<MonthAndDay> takeJapaneseDay(Reader& reader) {
  const auto month = reader.takeNumber(1, 2);
  if (!month || !reader.takeOneOf(kMonthSigns)) return std::nullopt;
  reader.skipBlanks();
  const auto day = reader.takeNumber(1, 2);
  if (!day) return std::nullopt;
  reader.takeOneOf(kDaySigns);
  return MonthAndDay{*month, *day};
}

std::optional<MonthAndDay> takeDay(std::string_view& text) {
  for (auto* const take : {&takeJapaneseDay, &takeEnglishDay}) {
    std::string_view rest = text;
    Reader reader(rest);
    const auto date = take(reader);
    if (!date) continue;
    text = rest;
    return date;
  }
  return std::nullopt;
}

/// "1996", "1996年".
std::optional<DateTime> takeYear(std::string_view& text, const MonthAndDay& date) {
  Reader reader(text);
  const auto year = reader.takeNumber(4, 4);
  if (!year) return std::nullopt;
  reader.takeOneOf(kYearSigns);
  if (!reader.takeEndOfDate() || !isDay(*year, date.month, date.day)) return std::nullopt;
  return DateTime{*year, date.month, date.day, 0, 0, 0};
}

/// "14:21".
std::optional<DateTime> takeTime(std::string_view& text, const MonthAndDay& date,
                                 const DateTime& now) {
  Reader reader(text);
  const auto hour = reader.takeNumber(1, 2);
  if (!hour || !reader.take(":")) return std::nullopt;
  const auto minute = reader.takeNumber(2, 2);
  if (!minute || !reader.takeEndOfDate() || !isTime(*hour, *minute)) return std::nullopt;
  return latestBefore(now, date, *hour, *minute);
}

/// "1996-11-06 14:21".
std::optional<DateTime> takeIsoDate(std::string_view& text) {
  Reader reader(text);
  const auto year = reader.takeNumber(4, 4);
  if (!year || !reader.take("-")) return std::nullopt;
  const auto month = reader.takeNumber(2, 2);
  if (!month || !reader.take("-")) return std::nullopt;
  const auto day = reader.takeNumber(2, 2);
  if (!day || !reader.take(" ") || !isDay(*year, *month, *day)) return std::nullopt;
  const auto hour = reader.takeNumber(2, 2);
  if (!hour || !reader.take(":")) return std::nullopt;
  const auto minute = reader.takeNumber(2, 2);
  if (!minute || !reader.takeEndOfDate() || !isTime(*hour, *minute)) return std::nullopt;
  return DateTime{*year, *month, *day, *hour, *minute, 0};
}

/// The hour of a 12-hour clock behind "AM" or "PM", or of a 24-hour clock without either.
std::optional<int> hourOfDay(int hour, Reader& reader) {
  const bool morning = (reader.take("AM") || reader.take("am"));
  const bool afternoon = !morning && (reader.take("PM") || reader.take("pm"));
  if (!morning && !afternoon) return hour;
  if (hour < 1 || hour > 12) return std::nullopt;
  return hour % 12 + (afternoon ? 12 : 0);
}

int fullYear(int year) {
  constexpr int kFirstOfLastCentury = 70;
  if (year >= 100) return year;
  return year + (year < kFirstOfLastCentury ? 2000 : 1900);
}

}  // namespace

std::optional<DateTime> takeUnixDate(std::string_view& text, const DateTime& now) {
  std::string_view rest = text;
  if (const auto date = takeIsoDate(rest)) {
    text = rest;
    return date;
  }
  const auto day = takeDay(text);
  if (!day || day->month < 1 || day->month > 12) return std::nullopt;
  Reader(text).skipBlanks();
  rest = text;
  auto date = takeTime(rest, *day, now);
  if (!date) {
    rest = text;
    date = takeYear(rest, *day);
  }
  text = rest;
  return date;
}

std::optional<DateTime> takeDosDate(std::string_view& text) {
  Reader reader(text);
  const auto month = reader.takeNumber(2, 2);
  if (!month || !reader.take("-")) return std::nullopt;
  const auto day = reader.takeNumber(2, 2);
  if (!day || !reader.take("-")) return std::nullopt;
  const auto year = reader.takeNumber(2, 4);
  if (!year || !isDay(fullYear(*year), *month, *day)) return std::nullopt;
  reader.skipBlanks();
  const auto clockHour = reader.takeNumber(2, 2);
  if (!clockHour || !reader.take(":")) return std::nullopt;
  const auto minute = reader.takeNumber(2, 2);
  if (!minute) return std::nullopt;
  const auto hour = hourOfDay(*clockHour, reader);
  if (!hour || !isTime(*hour, *minute)) return std::nullopt;
  return DateTime{fullYear(*year), *month, *day, *hour, *minute, 0};
}

}  // namespace karvel
