#include "check/log_findings.h"

#include <algorithm>

#include "check/quotation.h"
#include "text/code_page.h"
#include "text/line_splitter.h"
#include "text/path.h"
#include "text/strings.h"

namespace karvel {
namespace {

constexpr std::size_t kMostLines = 200;
constexpr std::size_t kStampLength = 19;  ///< "yyyy/mm/dd hh:mm:ss"

/// What the runs in the log have come to.
class Runs {
 public:
  void take(const std::string& line) {
    if (contains(line, "Snd Start")) {
      start_ = line.substr(0, kStampLength);
      tableIsNext_ = sent_ = false;
      reason_.clear();
    }
    if (start_.empty()) return;  // the end of a run whose beginning is not among the lines
    if (contains(line, "Ftp_ShopFold Exit")) tableIsNext_ = true;
    if (tableIsNext_ && contains(line, "FTP:PutFile OK")) sent_ = true;
    const auto failure = line.find("FTP:");
    if (contains(line, " NG ") && failure != std::string::npos) reason_ = line.substr(failure);
    if (contains(line, "Snd Exit")) end();
  }

  std::string lastRun;
  std::string lastDelivery;
  std::string lastReason;
  int failures = 0;  ///< since the last delivery

 private:
  void end() {
    lastRun = start_;
    if (sent_) lastDelivery = start_;
    failures = sent_ ? 0 : failures + 1;
    if (!sent_) {
      lastReason = !reason_.empty() ? std::string(trimmed(reason_))
                   : tableIsNext_   ? "理由の記録はありません"
                                  : "サイトに接続できないか、フォルダが見つかりません";
    }
  }

  std::string start_;
  bool tableIsNext_ = false;
  bool sent_ = false;
  std::string reason_;
};

}  // namespace

std::vector<std::string> lastLogLines(Shop& shop) {
  const std::string folder = joinPath(shop.folder, "Log");
  auto logs = shop.inspection.entries(folder);
  std::vector<std::string> last;
  for (auto log = logs.rbegin(); log != logs.rend() && last.size() < kMostLines; ++log) {
    if (log->folder || !log->name.ends_with(".log")) continue;
    std::vector<std::string> day;
    LineSplitter lines;
    const auto take = [&](std::string_view line) {
      day.push_back(quotedLogLine(shop, fromCodePage932(line)));
    };
    // An unreadable rest is left out.
    static_cast<void>(shop.files.readPieces(
        joinPath(folder, log->name), [&](std::string_view piece) { lines.feed(piece, take); }));
    lines.finish(take);
    last.insert(last.begin(), day.begin(), day.end());
  }
  if (last.size() > kMostLines) {
    last.erase(last.begin(), last.end() - static_cast<std::ptrdiff_t>(kMostLines));
  }
  return last;
}

void findRuns(const Shop& shop, const std::vector<std::string>& lines, Findings& findings) {
  if (lines.empty()) {
    findings.notice("log", "ログがありません", "「Log」フォルダがあるかを確かめます。");
    return;
  }
  Runs runs;
  for (const std::string& line : lines) runs.take(line);
  if (runs.lastRun.empty()) {
    findings.notice("log", "ログに、終わった転送がありません", "転送を行ってから確かめます。");
    return;
  }
  if (shop.form.destination() == FtpForm::Destination::kOutputFolder) {
    // The log has no line for a delivery into a folder.
    findings.good(
        "log", "最後の転送は" + runs.lastRun + "に行われました(届いたかは、ログでは分かりません)");
    return;
  }
  const std::string delivered = runs.lastDelivery.empty()
                                    ? "ログに、届いた転送がありません"
                                    : "最後に届いた転送は" + runs.lastDelivery + "です";
  if (runs.failures == 0) {
    findings.good("log", delivered);
  } else {
    findings.notice("log",
                    delivered + "。その後の失敗は" + std::to_string(runs.failures) + "回、最後は" +
                        runs.lastRun + ": " + runs.lastReason,
                    "理由の説明をご覧ください。");
  }
}

}  // namespace karvel
