#include <gtest/gtest.h>

#include <string>

#include "stats/reception_tally.h"
#include "text/date_time.h"
#include "text/strings.h"

namespace karvel {
namespace {

/// The longest wait tells whether and as what the call time was read.
int minutesSinceMidnight(const std::string& call) {
  ReceptionTally tally;
  tally.addLine("0\t00:00:00\t" + call + "\t3\t1\t\t6\t\t8\t9\t10");
  return tally.figures().longestWait;
}

TEST(ReceptionTimes, AreReadByTheGeneralRuleWhateverCharacterIsInThem) {
  for (const std::string time : {"23:59:59", "10:08:30"}) {
    for (std::size_t place = 0; place < time.size(); ++place) {
      for (int value = 0; value < 256; ++value) {
        if (value == '\t') continue;
        std::string changed = time;
        changed[place] = static_cast<char>(value);
        const int expected =
            static_cast<int>(roundedMinutes(secondsOfDay(trimmed(changed)).value_or(0)));
        EXPECT_EQ(minutesSinceMidnight(changed), expected) << testing::PrintToString(changed);
      }
    }
  }
}

TEST(ReceptionTimes, OfAWholeDayAreRead) {
  constexpr int kStep = 61;  // every hour, every minute, every second
  for (int seconds = 0; seconds < kSecondsPerDay; seconds += kStep) {
    const std::string time =
        formatTime({.hour = seconds / 3600, .minute = seconds / 60 % 60, .second = seconds % 60});
    ASSERT_EQ(minutesSinceMidnight(time), roundedMinutes(seconds)) << time;
  }
}

}  // namespace
}  // namespace karvel
