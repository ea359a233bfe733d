#include <gtest/gtest.h>

#include <random>

#include "fakes/fake_clock.h"
#include "fakes/fake_profile.h"
#include "stats/desk_reader.h"
#include "stats/reception_tally.h"
#include "text/code_page.h"
#include "text/line_splitter.h"
#include "text/path.h"
#include "text/strings.h"
#include "text/tab_fields.h"

namespace karvel {
namespace {

DeskFigures figuresOf(const std::vector<std::string>& lines) {
  ReceptionTally tally;
  for (const std::string& line : lines) tally.addLine(line);
  return tally.figures();
}

std::string record(const std::string& issue, const std::string& call,
                   const std::string& handled = "1", const std::string& mail = "",
                   const std::string& reservations = "") {
  return "0\t" + issue + "\t" + call + "\t3\t" + handled + "\t" + mail + "\t6\t" + reservations +
         "\t8\t9\t10";
}

TEST(Receptions, CountAsRecordsWithElevenFieldsAlone) {
  const std::string good = record("10:00:00", "10:01:00");
  EXPECT_EQ(figuresOf({"", good + "\t", good.substr(0, good.rfind('\t'))}), DeskFigures{});
  EXPECT_EQ(figuresOf({std::string(10, '\t'), good}).unhandled, 1);
  DeskFigures open;
  open.unhandled = 1;
  EXPECT_EQ(figuresOf({record("10:00:00", "10:01:00", "  ", "m", "9")}), open);
  const DeskFigures handled = figuresOf({good, record(" 10:00:00 ", "10:02:00 ", " x ")});
  EXPECT_EQ(handled.handled, 2);
  EXPECT_EQ(handled.band[1], 2);
  EXPECT_EQ(handled.longestWait, 2);
}

TEST(Receptions, CountMailAndReservationsOnceEach) {
  const std::string ten = "10:00:00";
  const DeskFigures figures =
      figuresOf({record(ten, ten, "1", "m", "3"), record(ten, ten, "1", " ", "0"),
                 record(ten, ten, "1", "0", " 1 "), record(ten, ten, "1", "", "-1"),
                 record(ten, ten, "1", "", "0.5"), record(ten, ten, "1", "", "x1")});
  EXPECT_EQ(figures.mail, 2);
  EXPECT_EQ(figures.reservations, 3);
}

TEST(Receptions, FallIntoTheBandOfTheirIssueTime) {
  const struct {
    std::string issue;
    int band;  // -1: none
  } cases[] = {
      {"08:59:59", 0},
      {"09:00:00", 1},
      {"10:59:59", 1},
      {"11:00:00", 2},
      {"13:00:00", 3},
      {"15:00:00", 4},
      {"17:00:00", 5},
      {"20:59:59", 6},
      {"21:00:00", 7},
      {"23:59:59", 7},
      {"24:00:00", -1},
      {"9:05:00", -1},
      {"1x:00:00", 0},
      {"010:00:00", -1},
      {toCodePage932("10：00：00"), 1},
      {toCodePage932("１２：００：０"), -1},
      {toCodePage932("１２：００：００秒"), -1},
  };
  for (const auto& c : cases) {
    const DeskFigures figures = figuresOf({record(c.issue, "10:00:00")});
    std::array<std::int32_t, DeskFigures::kBands> expected{};
    if (c.band >= 0) expected[static_cast<std::size_t>(c.band)] = 1;
    EXPECT_EQ(figures.band, expected) << c.issue;
    EXPECT_EQ(figures.handled, 1) << c.issue;
  }
}

TEST(Receptions, WaitFromIssueToCall) {
  const struct {
    const char* what;
    std::vector<std::string> lines;
    int average;
    int longest;
  } cases[] = {
      {"a half rounds up", {record("10:00:00", "10:07:30")}, 8, 8},
      {"just below a half", {record("10:00:00", "10:07:29")}, 7, 7},
      {"over midnight", {record("23:58:00", "00:03:00")}, 5, 5},
      {"called before issued is the next day", {record("10:00:00", "09:59:00")}, 1439, 1439},
      {"no wait", {record("10:00:00", "10:00:00")}, 0, 0},
      {"unreadable times count as handled and wait nothing",
       {record("10:00:00", "10:10:00"), record("10:00:00", "xx"), record("", "10:00:00"),
        record("25:00:00", "10:00:00"), record("10:60:00", "10:00:00")},
       2,
       10},
      {"short forms are times, longer ones are none",
       {record("9:05:00", "9:15"), record("9:5", "9:25:0"), record("009:00:00", "10:00:00")},
       10,
       20},
  };
  for (const auto& c : cases) {
    const DeskFigures figures = figuresOf(c.lines);
    EXPECT_EQ(figures.averageWait, c.average) << c.what;
    EXPECT_EQ(figures.longestWait, c.longest) << c.what;
  }
}

TEST(Receptions, AreCalledAtIntervalsTakenInTextOrder) {
  const struct {
    const char* what;
    std::vector<std::string> calls;
    int minutes;
  } cases[] = {
      {"a long gap is left out", {"12:04:00", "10:00:00", "12:00:00", "10:05:00"}, 5},
      {"one call", {"10:00:00"}, 0},
      {"equal calls are no interval", {"10:00:00", "10:00:00", "10:06:00"}, 6},
      {"an hour is too long", {"10:00:00", "11:00:00"}, 0},
      {"just below an hour", {"10:00:00", "10:59:59"}, 60},
      {"unreadable calls are left out", {"10:00:00", "10:03:xx", "10:06:00", "", "zz"}, 6},
      {"short forms sort as texts", {"10:00:00", "9:58:00", "9:50:00", "10:02:00"}, 5},
  };
  for (const auto& c : cases) {
    std::vector<std::string> lines;
    for (const std::string& call : c.calls) lines.push_back(record("08:00:00", call));
    EXPECT_EQ(figuresOf(lines).callInterval, c.minutes) << c.what;
  }
}

// Times of the usual form are read eight characters at once; the longest wait tells as what.
TEST(Receptions, HaveTimesReadByTheGeneralRuleWhateverCharacterIsInThem) {
  for (std::size_t place = 0; place < 8; ++place) {
    for (int value = 0; value < 256; ++value) {
      if (value == '\t') continue;
      std::string time = "23:59:59";
      time[place] = static_cast<char>(value);
      EXPECT_EQ(figuresOf({record("00:00:00", time)}).longestWait,
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

TEST(DeskReader, ReadsTheFileOfDeskAndDay) {
  const std::string ticketFile = joinPath("shop", "karvel.ini");
  FakeFiles files;
  FakeClock clock;
  FakeProfile profile(files);
  IniRedWrt settings(profile, files, clock);
  settings.TicketIniPath = ticketFile;
  DeskReader desks(files, settings, "shop");
  const std::string good = record("10:00:00", "10:05:00") + "\r\n";
  const auto put = [&](const std::string& name, const std::string& content) {
    files.files[joinPath(joinPath("shop", "temp"), name)].content = content;
  };
  put("240115_2.tmp", good);
  put("240114_2.tmp", good + good);
  put("_1.tmp", good);

  files.files[ticketFile].content = "[USER INFOMATION]\r\nTODAY=240115\r\n";
  EXPECT_EQ(desks.businessDayKey(), "240115");
  EXPECT_EQ(desks.Read_DeskFile("240115", 1), DeskFigures{});
  EXPECT_EQ(desks.Read_DeskFile("240115", 2).handled, 1);
  EXPECT_EQ(desks.Read_DeskFile("240114", 2).handled, 2);
  files.files[ticketFile].content.clear();
  EXPECT_EQ(desks.businessDayKey(), "");
  EXPECT_EQ(desks.Read_DeskFile("", 1).handled, 1);
}

}  // namespace
}  // namespace karvel
