#include "stats/reception_tally.h"

#include <algorithm>
#include <optional>

#include "text/code_page.h"
#include "text/numeric_value.h"
#include "text/strings.h"

namespace karvel {
namespace {

enum Field : std::size_t {
  kIssueTime = 1,
  kCallTime = 2,
  kHandledMarker = 4,
  kMailMarker = 5,
  kReservations = 7,
};

constexpr std::size_t kTimeLength = 8;  // hh:mm:ss

/// The hours at which one band ends and the next begins.
constexpr std::array kBandEnds{9, 11, 13, 15, 17, 19, 21, 24};
static_assert(kBandEnds.size() == DeskFigures::kBands);

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

constexpr int twoDigits(const char* digits) {
  return (digits[0] - '0') * 10 + (digits[1] - '0');
}

/// Seconds of a time written hh:mm:ss, the form of nearly every record; anything else is left to
/// the general rule.
std::optional<int> writtenSeconds(std::string_view text) {
  if (text.size() != kTimeLength || text[2] != ':' || text[5] != ':') return std::nullopt;
  for (const std::size_t digit : {0, 1, 3, 4, 6, 7}) {
    if (!isDigit(text[digit])) return std::nullopt;
  }
  const int hour = twoDigits(&text[0]);
  const int minute = twoDigits(&text[3]);
  const int second = twoDigits(&text[6]);
  if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return hour * 3600 + minute * 60 + second;
}

bool isAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return static_cast<signed char>(c) >= 0; });
}

/// The hour that an issue time of eight characters begins with; empty for any other length.
std::optional<double> leadingHour(std::string_view issueTime) {
  if (isAscii(issueTime)) {
    if (issueTime.size() != kTimeLength) return std::nullopt;
    return numericValue(issueTime.substr(0, 2));
  }
  const std::string text = fromCodePage932(issueTime);
  if (characterCount(text) != kTimeLength) return std::nullopt;
  return numericValue(firstCharacters(text, 2));
}

}  // namespace

bool ReceptionTally::split(std::string_view line, Fields& fields) {
  // Byte by byte is safe: neither TAB nor blank is ever half of a double-byte character.
  std::size_t count = 0;
  std::size_t begin = 0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] != '\t') continue;
    if (count == kFieldCount - 1) return false;
    fields[count++] = line.substr(begin, i - begin);
    begin = i + 1;
  }
  fields[count++] = line.substr(begin);
  return count == kFieldCount;
}

void ReceptionTally::addLine(std::string_view line) {
  Fields fields;
  if (!split(line, fields)) return;
  if (trimmed(fields[kHandledMarker]).empty()) {
    ++counts_.unhandled;
    return;
  }
  ++counts_.handled;
  addHandled(fields);
}

void ReceptionTally::addHandled(const Fields& fields) {
  const std::string_view issueTime = trimmed(fields[kIssueTime]);
  const std::string_view callTime = trimmed(fields[kCallTime]);

  const auto issueWritten = writtenSeconds(issueTime);
  const auto callWritten = writtenSeconds(callTime);
  const auto issueSeconds = issueWritten ? issueWritten : secondsOfDay(issueTime);
  const auto callSeconds = callWritten ? callWritten : secondsOfDay(callTime);
  if (issueSeconds && callSeconds) addWait(*issueSeconds, *callSeconds);

  if (!trimmed(fields[kMailMarker]).empty()) ++counts_.mail;
  const std::string_view reservations = trimmed(fields[kReservations]);
  if (!reservations.empty() && numericValue(reservations) > 0) ++counts_.reservations;

  addToBand(issueTime);

  if (callWritten) {
    callTimes_.addSeconds(*callWritten);
  } else {
    callTimes_.add(callTime);
  }
}

void ReceptionTally::addWait(int issueSeconds, int callSeconds) {
  int wait = callSeconds - issueSeconds;
  if (wait < 0) wait += kSecondsPerDay;  // called on the next day
  waitSum_ += wait;
  longestWait_ = std::max(longestWait_, wait);
}

void ReceptionTally::addToBand(std::string_view issueTime) {
  const auto hour = leadingHour(issueTime);
  if (!hour) return;
  for (std::size_t band = 0; band < kBandEnds.size(); ++band) {
    if (*hour < kBandEnds[band]) {
      ++counts_.band[band];
      return;
    }
  }
}

DeskFigures ReceptionTally::figures() const {
  DeskFigures figures = counts_;
  if (figures.handled > 0 && waitSum_ > 0) {
    figures.averageWait = static_cast<std::int32_t>(roundedMinutes(waitSum_ / figures.handled));
  }
  figures.longestWait = static_cast<std::int32_t>(roundedMinutes(longestWait_));
  figures.callInterval = static_cast<std::int16_t>(callTimes_.averageIntervalMinutes());
  return figures;
}

}  // namespace karvel
