#include <gtest/gtest.h>

#include <random>

#include "stats/reception_tally.h"
#include "text/line_splitter.h"
#include "text/strings.h"
#include "text/tab_fields.h"

namespace karvel {
namespace {

// Times of the usual form are read eight characters at once; the longest wait tells as what.
TEST(Receptions, HaveTimesReadByTheGeneralRuleWhateverCharacterIsInThem) {
  for (std::size_t place = 0; place < 8; ++place) {
    for (int value = 0; value < 256; ++value) {
      if (value == '\t') continue;
      std::string time = "23:59:59";
      time[place] = static_cast<char>(value);
      ReceptionTally tally;
      tally.addLine("\t00:00:00\t" + time + "\t\t1\t\t\t\t\t\t");
      EXPECT_EQ(tally.figures().longestWait,
                roundedMinutes(secondsOfDay(trimmed(time)).value_or(0)))
          << testing::PrintToString(time);
    }
  }
}

// Characters that differ from TAB in one bit, or by one, would be taken for it by sloppy arithmetic
// on eight bytes at once, above all right behind a TAB.
TEST(TabFields, AreCutAtEveryPlaceOfALine) {
  constexpr std::size_t kCount = 4;
  const std::string characters("\t\t\t\x08\x0A\x0B\x89\x01\x00\xFF\x80 a", 13);
  std::mt19937 random(1);
  TabFields<kCount> fields;
  for (int round = 0; round < 20'000; ++round) {
    std::vector<std::string> expected(1);
    std::string line;
    for (auto length = random() % 28; length > 0; --length) {
      const char c = random() % 2 == 0 ? characters[random() % characters.size()] : 'x';
      line += c;
      if (c == '\t') {
        expected.emplace_back();
      } else {
        expected.back() += c;
      }
    }
    ASSERT_EQ(fields.split(line), expected.size() == kCount) << testing::PrintToString(line);
    for (std::size_t i = 0; i < kCount && expected.size() == kCount; ++i) {
      ASSERT_EQ(fields[i], expected[i]) << i << " of " << testing::PrintToString(line);
    }
  }
}

TEST(LineSplitter, CutsAtLineFeedsWhereverThePiecesEnd) {
  const std::string text("a\r\nb\nc\rd\r\n\r\n\0e\nlast", 19);
  const std::vector<std::string> lines{"a", "b", "c\rd", "", std::string("\0e", 2), "last"};
  for (std::size_t piece = 1; piece <= text.size(); ++piece) {
    std::vector<std::string> found;
    LineSplitter splitter;
    const auto take = [&](std::string_view line) { found.emplace_back(line); };
    for (std::size_t at = 0; at < text.size(); at += piece) {
      splitter.feed(std::string_view(text).substr(at, piece), take);
    }
    splitter.finish(take);
    EXPECT_EQ(found, lines) << "pieces of " << piece;
  }
}

TEST(LineSplitter, PassesOverALineThatIsTooLong) {
  std::vector<std::size_t> lengths;
  LineSplitter splitter;
  const auto take = [&](std::string_view line) { lengths.push_back(line.size()); };
  const std::string piece(LineSplitter::kLongestLine / 2, 'x');
  for (const int pieces : {2, 3}) {
    for (int i = 0; i < pieces; ++i) splitter.feed(piece, take);
    splitter.feed("\nshort\n", take);
  }
  EXPECT_EQ(lengths, (std::vector<std::size_t>{LineSplitter::kLongestLine, 5, 5}));
}

}  // namespace
}  // namespace karvel
