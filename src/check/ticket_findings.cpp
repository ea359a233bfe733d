#include "check/ticket_findings.h"

#include <algorithm>

#include "stats/statistics_table.h"
#include "text/code_page.h"
#include "text/line_splitter.h"
#include "text/numeric_value.h"
#include "text/path.h"
#include "text/strings.h"

namespace karvel {
namespace {

/// Columns of the table's row of a desk.
enum Column : std::size_t { kDeskNumber = 6, kDeskName, kHandled, kUnhandled };

constexpr std::size_t kLongestName = 255;  ///< bytes, of a file

std::vector<std::string> fieldsOf(std::string_view line) {
  std::vector<std::string> fields;
  for (auto tab = line.find('\t'); tab != std::string_view::npos; tab = line.find('\t')) {
    fields.emplace_back(line.substr(0, tab));
    line.remove_prefix(tab + 1);
  }
  fields.emplace_back(line);
  return fields;
}

std::string todayKey(Shop& shop) {
  const DateTime now = shop.clock.now();
  return formatDayKey(now.year, now.month, now.day);
}

bool isNamePart(const std::string& text) {
  return isPlainName(text) && !contains(text, "..");
}

void findDay(Shop& shop, const std::string& day, Findings& findings) {
  const std::string advice =
      "発券システムが起動しているか、日付の切り替えが済んでいるかを確かめます。";
  if (day.empty()) {
    findings.notice("today", "発券システムの営業日(TODAY)が空です", advice);
  } else if (!isNamePart(day)) {
    findings.trouble("today", "発券システムの営業日(TODAY)「" + day + "」では集計を作れません",
                     advice);
  } else if (day != todayKey(shop)) {
    findings.notice(
        "today",
        "発券システムの営業日(TODAY)は" + day + "で、今日(" + todayKey(shop) + ")ではありません",
        advice);
  } else {
    findings.good("today", "発券システムの営業日は今日(" + day + ")です");
  }
}

int linesIn(Shop& shop, const std::string& path) {
  int count = 0;
  LineSplitter lines;
  const auto take = [&count](std::string_view line) { count += trimmed(line).empty() ? 0 : 1; };
  // What can be read counts, as it does for the table.
  static_cast<void>(
      shop.files.readPieces(path, [&](std::string_view piece) { lines.feed(piece, take); }));
  lines.finish(take);
  return count;
}

void findDesk(Shop& shop, const std::string& day, const std::vector<std::string>& row,
              Findings& findings) {
  const std::string name = day + "_" + row[kDeskNumber] + ".tmp";
  const std::string path = joinPath(joinPath(shop.folder, "temp"), name);
  const std::string desk = "受付" + row[kDeskNumber] + "「" + row[kDeskName] + "」";
  const int counted = wholeNumericValue(row[kHandled]) + wholeNumericValue(row[kUnhandled]);
  if (!shop.files.exists(path)) {
    findings.notice(
        "reception-files", desk + "の受付ファイル(temp内の" + name + ")がありません",
        "発券システムがこのフォルダのtempに書いているかを確かめます。0として届きます。");
  } else if (counted == 0) {
    findings.notice("reception-files",
                    desk + "の受付ファイルに数えられる記録がありません(" +
                        std::to_string(linesIn(shop, path)) + "行)",
                    "まだ受付がないか、1行の項目が11かを確かめます。0として届きます。");
  } else {
    findings.good("reception-files", desk + "の受付は処理済" + row[kHandled] + "件、未処理" +
                                         row[kUnhandled] + "件です");
  }
}

void findDesks(Shop& shop, const std::string& day, Findings& findings) {
  DeskReader desks(shop.files, shop.settings, shop.folder);
  StatisticsTable table(shop.form, desks, shop.settings, shop.unchanging, shop.clock, shop.folder);
  const std::string name = table.Make_StatFile("");
  if (name.empty() || name.size() > kLongestName) {
    if (!shop.form.shopCodeValid() || !isNamePart(day)) return;  // which has been said
    const std::string& code = shop.form.text(FtpForm::Field::kShopCode);
    findings.trouble(
        "shop-code",
        "店舗ｺｰﾄﾞ「" + code + "」と営業日「" + day + "」からは、集計ファイルの名前を作れません",
        "「ｸﾞﾙｰﾌﾟ登録」で1から99999までの番号を登録します。");
    return;
  }

  std::vector<std::vector<std::string>> rows;
  LineSplitter lines;
  const auto take = [&](std::string_view line) { rows.push_back(fieldsOf(line)); };
  lines.feed(fromCodePage932(shop.unchanging.written[joinPath(shop.folder, name)]), take);
  lines.finish(take);
  if (!rows.empty()) rows.erase(rows.begin());  // the header

  const std::string stored = shop.settings.read(ticket::kLastDesk);
  const std::string count = std::to_string(rows.size());
  if (numericValue(stored) + 1 == static_cast<double>(rows.size()) && !stored.empty()) {
    findings.good("desks", "受付の数は" + count + "です");
  } else {
    findings.notice(
        "desks", "受付の数(SHINSATSU)「" + stored + "」が正しくないため、" + count + "とみなします",
        "発券システムの設定を確かめます。");
  }
  for (const auto& row : rows) {
    if (row.size() > kUnhandled) findDesk(shop, day, row, findings);
  }
}

void findPastDays(Shop& shop, const std::string& day, Findings& findings) {
  constexpr std::string_view kExtension = ".tmp";
  constexpr std::size_t kKeyLength = 6;
  std::vector<std::string> days;
  for (const Inspection::Entry& entry : shop.inspection.entries(joinPath(shop.folder, "temp"))) {
    const std::string key = entry.name.substr(0, kKeyLength);
    const bool kept = entry.name == key + std::string(kExtension) && dateOfDayKey(key);
    if (kept && key != day) days.push_back(key);
  }
  if (days.empty()) return;
  findings.good("past-days", "過去の日のデータが" + std::to_string(days.size()) + "日分あります(" +
                                 days.front() + "から" + days.back() + "まで)");
}

}  // namespace

void findTicketApplication(Shop& shop, Findings& findings) {
  const std::string& path = shop.settings.TicketIniPath;
  if (!shop.files.exists(path)) {
    findings.trouble("ticket-app", "発券システムの設定がありません: " + path,
                     "karvel.hnbの「HST FOLD」を発券システムのフォルダにします。");
    return;
  }
  findings.good("ticket-app", "発券システムの設定は" + path + "です");
  const std::string day = shop.settings.read(ticket::kBusinessDay);
  findDay(shop, day, findings);
  findDesks(shop, day, findings);
  findPastDays(shop, day, findings);
}

}  // namespace karvel
