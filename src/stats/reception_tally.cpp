#include "stats/reception_tally.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

#include "text/code_page.h"
#include "text/eight_bytes.h"
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
constexpr int kSecondsPerHour = 3600;

/// The hours at which one band ends and the next begins.
constexpr std::array kBandEnds{9, 11, 13, 15, 17, 19, 21, 24};
static_assert(kBandEnds.size() == DeskFigures::kBands);

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

constexpr std::uint64_t kMidnight = 0x3030'3A30'303A'3030;  // 00:00:00
constexpr std::uint64_t kLatest = 0x0905'0009'0500'0902;    // 29:59:59, above midnight
constexpr std::uint64_t kUpToHighestBit = inEachPlace(0x7F) - kLatest;

/// Seconds of a time written hh:mm:ss, the form of nearly every record; empty for any other
/// text. Compares all characters in one step, because every record has two times.
std::optional<int> writtenSeconds(std::string_view text) {
  if (text.size() != kTimeLength) return std::nullopt;
  // How far each character is above that of 00:00:00: a digit by at most 9, a colon by 0.
  const std::uint64_t above = eightBytes(text.data()) ^ kMidnight;
  if ((((above + kUpToHighestBit) | above) & inEachPlace(0x80)) != 0) return std::nullopt;

  const auto digit = [above](int place) { return static_cast<int>(above >> (8 * place) & 0xFF); };
  const int hour = digit(0) * 10 + digit(1);
  const int minute = digit(3) * 10 + digit(4);
  const int second = digit(6) * 10 + digit(7);
  if (hour > 23) return std::nullopt;
  return hour * kSecondsPerHour + minute * 60 + second;
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

bool isPositive(std::string_view number) {
  const bool isDigitAlone = number.size() == 1 && isDigit(number[0]);
  return isDigitAlone ? number[0] != '0' : !number.empty() && numericValue(number) > 0;
}

}  // namespace

void ReceptionTally::addLine(std::string_view line) {
  Fields fields;
  if (!fields.split(line)) return;
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
  if (isPositive(reservations)) ++counts_.reservations;

  if (issueWritten) {
    const int wholeHours = *issueWritten / kSecondsPerHour;
    addToBand(wholeHours);
  } else if (const auto hour = leadingHour(issueTime)) {
    addToBand(*hour);
  }

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

void ReceptionTally::addToBand(double hour) {
  for (std::size_t band = 0; band < kBandEnds.size(); ++band) {
    if (hour < kBandEnds[band]) {
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
