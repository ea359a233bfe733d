#include "stats/statistics_table.h"

#include <cmath>
#include <string_view>
#include <utility>

#include "text/code_page.h"
#include "text/numeric_value.h"
#include "text/path.h"
#include "text/strings.h"

namespace karvel {
namespace {

constexpr std::string_view kHeader =
    "日付\t時間\tグループNo\tグループ名\t店舗No\t店舗名\t受付No\t受付名\t処理済\t未処理\tメール\t"
    "予約数\t\uFF5E09時\t09時\uFF5E\t11時\uFF5E\t13時\uFF5E\t15時\uFF5E\t17時\uFF5E\t19時\uFF5E\t"
    "21時\uFF5E\t平均(分)\t最長(分)\t処理(分)\r\n";

constexpr int kMostDesks = ticket::kDeskNames.size();

void addNumber(std::string& row, int number) {
  row.append("\t").append(std::to_string(number));
}

}  // namespace

StatisticsTable::StatisticsTable(const FtpForm& form, DeskReader& desks, IniRedWrt& settings,
                                 Files& files, Clock& clock, std::string programFolder)
    : form_(form),
      desks_(desks),
      settings_(settings),
      files_(files),
      clock_(clock),
      programFolder_(std::move(programFolder)) {
}

std::string StatisticsTable::Make_StatFile(const std::string& dateKey) {
  if (!form_.shopCodeValid()) return {};
  if (!dateKey.empty() && !desks_.hasDay(dateKey)) return {};

  const Day day = dayOf(dateKey);
  const std::string name = form_.text(FtpForm::Field::kShopCode) + "_" + day.key + ".txt";
  if (!isPlainName(name) || contains(name, "..")) return {};

  std::string table(kHeader);
  const int desks = deskCount();
  for (int desk = 1; desk <= desks; ++desk) table += row(day, desk);

  const bool written = files_.write(joinPath(programFolder_, name), toCodePage932(table));
  return written ? name : std::string();
}

StatisticsTable::Day StatisticsTable::dayOf(const std::string& dateKey) {
  const DateTime now = clock_.now();
  if (dateKey.empty()) return {desks_.businessDayKey(), formatDate(now), formatTime(now)};
  return {dateKey, dateOfDayKey(dateKey).value_or(formatDate(now)), formatTime(now)};
}

int StatisticsTable::deskCount() {
  const double stored = numericValue(settings_.read(ticket::kLastDesk));
  const double last = stored < 0 || stored > kMostDesks - 1 ? 0 : stored;
  return static_cast<int>(std::nearbyint(last + 1));
}

std::string StatisticsTable::row(const Day& day, int desk) {
  using Field = FtpForm::Field;
  const DeskFigures figures = desks_.Read_DeskFile(day.key, desk);

  std::string row = day.date + "\t" + day.time;
  for (const auto field :
       {Field::kGroupCode, Field::kGroupName, Field::kShopCode, Field::kShopName}) {
    row.append("\t").append(form_.text(field));
  }
  addNumber(row, desk);
  row.append("\t").append(settings_.read(ticket::kDeskNames.at(std::size_t(desk) - 1)));
  for (const int count : {figures.handled, figures.unhandled, figures.mail, figures.reservations}) {
    addNumber(row, count);
  }
  for (const int count : figures.band) addNumber(row, count);
  for (const int minutes :
       {figures.averageWait, figures.longestWait, std::int32_t{figures.callInterval}}) {
    addNumber(row, minutes);
  }
  return row.append("\r\n");
}

}  // namespace karvel
