#include "text/date_time.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace karvel {
namespace {

template <typename... Numbers>
std::string formatted(const char* pattern, Numbers... numbers) {
  std::array<char, 80> buffer{};
  std::snprintf(buffer.data(), buffer.size(), pattern, numbers...);
  return buffer.data();
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

/// Takes one or two digits off the front of `text`.
std::optional<int> takeNumber(std::string_view& text, int highest) {
  std::size_t length = 0;
  int value = 0;
  while (length < text.size() && length < 2 && isDigit(text[length])) {
    value = value * 10 + (text[length] - '0');
    ++length;
  }
  if (length == 0 || value > highest) return std::nullopt;
  text.remove_prefix(length);
  return value;
}

bool takeColon(std::string_view& text) {
  if (text.empty() || text.front() != ':') return false;
  text.remove_prefix(1);
  return true;
}

}  // namespace

std::string formatDate(const DateTime& t) {
  return formatted("%04d/%02d/%02d", t.year, t.month, t.day);
}

std::string formatTime(const DateTime& t) {
  return formatted("%02d:%02d:%02d", t.hour, t.minute, t.second);
}

std::string formatDateMinute(const DateTime& t) {
  return formatted("%04d/%02d/%02d %02d:%02d", t.year, t.month, t.day, t.hour, t.minute);
}

std::string formatDayKey(int year, int month, int day) {
  return formatted("%02d%02d%02d", year % 100, month, day);
}

std::optional<std::string> dateOfDayKey(std::string_view key) {
  if (key.size() != 6 || !std::all_of(key.begin(), key.end(), isDigit)) return std::nullopt;
  std::string date = "20";
  date.append(key.substr(0, 2)).append("/").append(key.substr(2, 2)).append("/");
  return date.append(key.substr(4, 2));
}

std::optional<int> secondsOfDay(std::string_view text) {
  const auto hour = takeNumber(text, 23);
  if (!hour || !takeColon(text)) return std::nullopt;
  const auto minute = takeNumber(text, 59);
  if (!minute) return std::nullopt;
  int total = *hour * 3600 + *minute * 60;
  if (text.empty()) return total;
  if (!takeColon(text)) return std::nullopt;
  const auto second = takeNumber(text, 59);
  if (!second || !text.empty()) return std::nullopt;
  return total + *second;
}

long roundedMinutes(double seconds) {
  return static_cast<long>(std::floor(seconds / 60.0 + 0.5));
}

}  // namespace karvel
