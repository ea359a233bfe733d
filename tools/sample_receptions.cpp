#include "sample_receptions.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ostream>
#include <string>

#include "text/date_time.h"

namespace karvel::sample {
namespace {

constexpr int kSecondsPerHour = 3600;
constexpr int kOpeningHour = 8;
/// How many of a hundred tickets are issued in each hour from the opening on.
constexpr std::array kTicketsPerHour{4, 8, 12, 13, 8, 8, 10, 10, 8, 9, 6, 3, 1};
constexpr int kBusy = 10;

int hourOfIssue(Dice& dice) {
  int place = dice.below(100);
  int hour = 0;
  while (place >= kTicketsPerHour.at(static_cast<std::size_t>(hour))) {
    place -= kTicketsPerHour.at(static_cast<std::size_t>(hour));
    ++hour;
  }
  return hour;
}

std::vector<int> issueTimes(int count, Dice& dice) {
  std::vector<int> times(static_cast<std::size_t>(count));
  for (int& time : times) {
    const int hour = kOpeningHour + hourOfIssue(dice);
    time = hour * kSecondsPerHour + dice.below(kSecondsPerHour);
  }
  std::sort(times.begin(), times.end());
  return times;
}

int wait(int issued, Dice& dice) {
  const auto hour = static_cast<std::size_t>(issued / kSecondsPerHour - kOpeningHour);
  const bool busy = kTicketsPerHour.at(hour) >= kBusy;
  const int usual = 30 + dice.below(8 * 60) + dice.below(8 * 60);
  return busy ? usual + dice.below(20 * 60) : usual;
}

std::string timeText(int seconds) {
  return formatTime(
      {.hour = seconds / kSecondsPerHour, .minute = seconds / 60 % 60, .second = seconds % 60});
}

/// A number as text with zeros in front.
std::string serial(int number, int width) {
  std::array<char, 16> buffer{};
  std::snprintf(buffer.data(), buffer.size(), "%0*d", width, number);
  return buffer.data();
}

std::string record(const Reception& reception) {
  const std::string number = serial(reception.number, 4);
  std::string line = number + "\t" + timeText(reception.issued) + "\t";
  if (reception.handled) line += timeText(reception.called);
  line += reception.handled ? "\tA1\t1\t" : "\tA1\t\t";
  if (reception.mail) line += "guest" + number + "@mail.example";
  line += "\t\t" + std::to_string(reception.reserved) + "\t\t\t\r\n";
  return line;
}

}  // namespace

std::vector<Reception> receptionsOfDay(int count, std::uint64_t seed) {
  Dice dice(seed);
  std::vector<Reception> receptions;
  receptions.reserve(static_cast<std::size_t>(count));
  for (const int issued : issueTimes(count, dice)) {
    Reception reception;
    reception.number = static_cast<int>(receptions.size()) + 1;
    reception.issued = issued;
    reception.called = (issued + wait(issued, dice)) % kSecondsPerDay;
    reception.handled = dice.happens(93);
    reception.mail = dice.happens(15);
    reception.reserved = dice.happens(12) ? 1 + dice.below(3) : 0;
    receptions.push_back(reception);
  }
  return receptions;
}

void writeReceptions(std::ostream& out, const std::vector<Reception>& receptions) {
  for (const Reception& reception : receptions) out << record(reception);
}

}  // namespace karvel::sample
