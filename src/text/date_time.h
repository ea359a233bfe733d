#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace karvel {

/// A calendar date and a time of day, to the second, without a time zone.
struct DateTime {
  int year = 1970;
  int month = 1;
  int day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;

  bool operator==(const DateTime&) const = default;
};

inline constexpr int kSecondsPerDay = 86400;

std::string formatDate(const DateTime& time);            ///< "yyyy/mm/dd"
std::string formatTime(const DateTime& time);            ///< "hh:mm:ss", 24-hour clock
std::string formatDateMinute(const DateTime& time);      ///< "yyyy/mm/dd hh:mm"
std::string formatDayKey(int year, int month, int day);  ///< "yymmdd"

/// The date of a day key "yymmdd" as "yyyy/mm/dd", in the years 2000 to 2099; empty when the key
/// is no six digits.
std::optional<std::string> dateOfDayKey(std::string_view key);

/// Seconds since midnight of a text h:m or h:m:s with one or two digits in each place (0 to 23, 0
/// to 59, 0 to 59); empty for any other text.
std::optional<int> secondsOfDay(std::string_view text);

/// Seconds as whole minutes, to the nearest one, a half up.
long roundedMinutes(double seconds);

}  // namespace karvel
