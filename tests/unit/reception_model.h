#pragma once

#include <algorithm>
#include <cmath>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "text/numeric_value.h"
#include "text/strings.h"

/// A slow model of a desk's figures, which shares nothing with the program but the numeric value
/// and the characters of a text.
namespace karvel::reception_model {

using Strings = std::vector<std::string>;

inline Strings cut(const std::string& text, char separator) {
  Strings parts;
  std::istringstream rest(text + separator);
  for (std::string part; std::getline(rest, part, separator);) parts.push_back(part);
  return parts;
}

/// Seconds of a time of day of one or two digits each, seconds optional; -1 for any other text.
inline int secondsOf(const std::string& time) {
  static const std::regex kTime(R"((\d\d?):(\d\d?)(:(\d\d?))?)", std::regex::optimize);
  std::smatch part;
  if (!std::regex_match(time, part, kTime)) return -1;
  const int hour = std::stoi(part[1]);
  const int minute = std::stoi(part[2]);
  const int second = part[4].matched ? std::stoi(part[4]) : 0;
  return hour > 23 || minute > 59 || second > 59 ? -1 : hour * 3600 + minute * 60 + second;
}

inline int minutes(double seconds) {
  return static_cast<int>(std::floor(seconds / 60 + 0.5));
}

/// The fifteen figures of a row, each behind a TAB.
inline std::string figuresOf(const std::string& receptions) {
  int handled = 0;
  int unhandled = 0;
  int mail = 0;
  int reservations = 0;
  std::vector<int> bands(8);
  double waits = 0;
  int longest = 0;
  std::multiset<std::string> calls;
  for (std::string line : cut(receptions, '\n')) {
    if (line.ends_with('\r')) line.pop_back();
    Strings fields = cut(line, '\t');
    if (fields.size() != 11) continue;
    for (std::string& field : fields) field = std::string(trimmed(field));
    if (fields[4].empty()) {
      ++unhandled;
      continue;
    }
    ++handled;
    const int issued = secondsOf(fields[1]);
    const int called = secondsOf(fields[2]);
    if (issued >= 0 && called >= 0) {
      const int wait = called < issued ? called - issued + 86400 : called - issued;
      waits += wait;
      longest = std::max(longest, wait);
    }
    if (!fields[5].empty()) ++mail;
    if (numericValue(fields[7]) > 0) ++reservations;
    if (characterCount(fields[1]) == 8) {
      const double hour = numericValue(firstCharacters(fields[1], 2));
      const int ends[] = {9, 11, 13, 15, 17, 19, 21, 24};
      const auto end =
          std::find_if(std::begin(ends), std::end(ends), [&](int e) { return hour < e; });
      if (end != std::end(ends)) ++bands[static_cast<std::size_t>(end - std::begin(ends))];
    }
    if (called >= 0) calls.insert(fields[2]);
  }

  double intervals = 0;
  int counted = 0;
  std::string previous = calls.empty() ? "" : *calls.begin();
  for (const std::string& call : calls) {
    const int difference = secondsOf(call) - secondsOf(previous);
    if (difference >= 1 && difference <= 3599) {
      intervals += difference;
      ++counted;
    }
    previous = call;
  }

  std::vector<int> figures{handled, unhandled, mail, reservations};
  figures.insert(figures.end(), bands.begin(), bands.end());
  figures.push_back(handled > 0 ? minutes(waits / handled) : 0);
  figures.push_back(minutes(longest));
  figures.push_back(counted > 0 ? minutes(intervals / counted) : 0);
  std::string row;
  for (const int figure : figures) row += "\t" + std::to_string(figure);
  return row;
}

}  // namespace karvel::reception_model
