#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <sstream>

#include "fakes/shop_world.h"
#include "stats/desk_reader.h"
#include "stats/reception_tally.h"
#include "text/code_page.h"
#include "text/line_splitter.h"

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

TEST(DeskFigures, CountsOnlyRecordsOfElevenFields) {
  const std::string good = record("10:00:00", "10:01:00");
  EXPECT_EQ(figuresOf({}), DeskFigures{});
  EXPECT_EQ(figuresOf({"", "x", good + "\t", good.substr(0, good.rfind('\t')), std::string(9, '\t'),
                       std::string(11, '\t')}),
            DeskFigures{});
  EXPECT_EQ(figuresOf({std::string(10, '\t'), good}).unhandled, 1);
  EXPECT_EQ(figuresOf({record("10:00:00", "10:01:00", "  ", "m", "9")}).unhandled, 1);
  const DeskFigures handled = figuresOf({good, record(" 10:00:00 ", "10:02:00 ", " x ")});
  EXPECT_EQ(handled.handled, 2);
  EXPECT_EQ(handled.band[1], 2);
}

TEST(DeskFigures, CountsMailAndReservationsOfHandledRecords) {
  const DeskFigures figures = figuresOf({
      record("10:00:00", "10:00:00", "1", "m", "3"),
      record("10:00:00", "10:00:00", "1", " ", "0"),
      record("10:00:00", "10:00:00", "1", "0", " 1 "),
      record("10:00:00", "10:00:00", "1", "", "-1"),
      record("10:00:00", "10:00:00", "1", "", "0.5"),
      record("10:00:00", "10:00:00", "1", "", "x1"),
      record("10:00:00", "10:00:00", "", "m", "3"),
  });
  EXPECT_EQ(figures.mail, 2);
  EXPECT_EQ(figures.reservations, 3);
}

TEST(DeskFigures, PutsEachHourIntoItsBand) {
  const struct {
    std::string issue;
    int band;  // -1: none
  } cases[] = {
      {"00:00:00", 0},
      {"08:59:59", 0},
      {"09:00:00", 1},
      {"10:59:59", 1},
      {"11:00:00", 2},
      {"13:00:00", 3},
      {"15:00:00", 4},
      {"17:00:00", 5},
      {"19:00:00", 6},
      {"20:59:59", 6},
      {"21:00:00", 7},
      {"23:59:59", 7},
      {"24:00:00", -1},
      {"99:00:00", -1},
      {"9:05:00", -1},
      {"", -1},
      {"10:00", -1},
      {"1x:00:00", 0},
      {"abcdefgh", 0},
      {"010:00:00", -1},
      {toCodePage932("１２：００：０"), -1},
      {toCodePage932("10：00：00"), 1},
  };
  for (const auto& c : cases) {
    const DeskFigures figures = figuresOf({record(c.issue, "10:00:00")});
    std::array<std::int32_t, DeskFigures::kBands> expected{};
    if (c.band >= 0) expected[static_cast<std::size_t>(c.band)] = 1;
    EXPECT_EQ(figures.band, expected) << c.issue;
    EXPECT_EQ(figures.handled, 1) << c.issue;
  }
}

TEST(DeskFigures, AveragesTheWaits) {
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
      {"short forms are times too", {record("9:05:00", "9:15"), record("9:5", "9:25:0")}, 15, 20},
  };
  for (const auto& c : cases) {
    const DeskFigures figures = figuresOf(c.lines);
    EXPECT_EQ(figures.averageWait, c.average) << c.what;
    EXPECT_EQ(figures.longestWait, c.longest) << c.what;
  }
}

TEST(DeskFigures, AveragesTheIntervalsBetweenCallsInTextOrder) {
  const struct {
    const char* what;
    std::vector<std::string> calls;
    int minutes;
  } cases[] = {
      {"a long gap is left out", {"12:04:00", "10:00:00", "12:00:00", "10:05:00"}, 5},
      {"one call", {"10:00:00"}, 0},
      {"equal calls", {"10:00:00", "10:00:00", "10:00:00"}, 0},
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

/// The same figures computed the slow, obvious way, from fields that are all well-formed.
class PlainCount {
 public:
  void add(int issue, int call, bool handled, bool mail, int reservations) {
    if (!handled) {
      ++figures_.unhandled;
      return;
    }
    ++figures_.handled;
    const int wait = call >= issue ? call - issue : call - issue + 86400;
    sum_ += wait;
    longest_ = std::max(longest_, wait);
    figures_.mail += mail ? 1 : 0;
    figures_.reservations += reservations > 0 ? 1 : 0;
    const int hour = issue / 3600;
    figures_.band[hour < 9 ? 0U : static_cast<unsigned>(std::min((hour - 7) / 2, 7))]++;
    calls_.push_back(call);
  }

  DeskFigures figures() {
    if (figures_.handled > 0) figures_.averageWait = minutes(sum_ / figures_.handled);
    figures_.longestWait = minutes(longest_);
    std::sort(calls_.begin(), calls_.end());
    double sum = 0;
    int count = 0;
    for (std::size_t i = 1; i < calls_.size(); ++i) {
      const int difference = calls_[i] - calls_[i - 1];
      if (difference < 1 || difference >= 3600) continue;
      sum += difference;
      ++count;
    }
    if (count > 0) figures_.callInterval = static_cast<std::int16_t>(minutes(sum / count));
    return figures_;
  }

 private:
  static int minutes(double seconds) { return static_cast<int>(std::floor(seconds / 60 + 0.5)); }

  DeskFigures figures_;
  double sum_ = 0;
  int longest_ = 0;
  std::vector<int> calls_;
};

std::string clockText(int seconds) {
  return formatTime({.hour = seconds / 3600, .minute = seconds / 60 % 60, .second = seconds % 60});
}

TEST(DeskFigures, AgreeWithAPlainCountOnRandomFiles) {
  std::mt19937 random(20240115);
  const auto below = [&](int limit) {
    return static_cast<int>(random() % static_cast<unsigned>(limit));
  };
  for (int round = 0; round < 60; ++round) {
    ReceptionTally tally;
    LineSplitter splitter;
    PlainCount plain;
    std::string text;
    for (int i = below(400); i > 0; --i) {
      const int issue = below(86400);
      const int call = below(4) == 0 ? below(86400) : (issue + below(5000)) % 86400;
      const bool handled = below(5) != 0;
      const bool mail = below(3) == 0;
      const int reservations = below(3);
      plain.add(issue, call, handled, mail, reservations);
      text += record(clockText(issue), clockText(call), handled ? "1" : " ", mail ? "m" : "",
                     std::to_string(reservations)) +
              "\r\n";
      if (below(10) == 0) text += "a line of no meaning\r\n";
    }
    const auto take = [&](std::string_view line) { tally.addLine(line); };
    const auto piece = static_cast<std::size_t>(1 + below(300));
    for (std::size_t at = 0; at < text.size(); at += piece) {
      splitter.feed(std::string_view(text).substr(at, piece), take);
    }
    splitter.finish(take);
    ASSERT_EQ(tally.figures(), plain.figures()) << "round " << round << ", pieces of " << piece;
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
  const std::string piece(1024 * 1024, 'x');
  for (int i = 0; i < 10; ++i) splitter.feed(piece, take);
  splitter.feed("\nshort\n", take);
  for (int i = 0; i < 40; ++i) splitter.feed(piece, take);
  splitter.feed("\nnext\n", take);
  splitter.finish(take);
  EXPECT_EQ(lengths, (std::vector<std::size_t>{10 * piece.size(), 5, 4}));
}

TEST(DeskReader, ReadsTheFileOfDeskAndDay) {
  ShopWorld shop;
  static_cast<void>(shop.start("-INIT"));
  FakeClock clock;
  FakeProfile profile(shop.files);
  IniRedWrt settings(profile, shop.files, clock);
  settings.TicketIniPath = ShopWorld::path("karvel.ini");
  DeskReader desks(shop.files, settings, ShopWorld::kFolder);

  shop.putReceptions("240115", 2, {record("10:00:00", "10:05:00")});
  shop.putReceptions("240114", 2, {record("10:00:00", "10:05:00"), record("11:00:00", "11:05:00")});
  shop.putReceptions("", 1, {record("10:00:00", "10:05:00")});
  EXPECT_EQ(desks.Read_DeskFile(1), DeskFigures{});
  EXPECT_EQ(desks.Read_DeskFile(2).handled, 1);
  EXPECT_EQ(desks.readDay("240114", 2).handled, 2);
  shop.setTicket("USER INFOMATION", "TODAY", "");
  EXPECT_EQ(desks.Read_DeskFile(1).handled, 1) << "without a day the key is empty";
}

}  // namespace
}  // namespace karvel
