#include "contract/run_report.h"

#include <cctype>

#include "text/strings.h"

namespace karvel {
namespace {

using Delivery = RunReport::Delivery;

constexpr std::size_t kFailureWidth = 128;
const std::string kRunLine = "HS-FTP:------------------------ Snd ";
const std::string kTransferLine = "HS-FTP:----------------------------- Make_Csv2Send ";
const std::string kShopInfoLine = "HS-FTP:---------------------------------- Ftp_ShopFold ";
const std::string kNotPut = "HS-FTP:PutFile NG ";
const std::string kNotRenamed = "HS-FTP:Rename NG ";

/// Goes through the lines of a log.
class LogReader {
 public:
  explicit LogReader(const std::vector<std::string>& lines) : lines_(lines) {}

  [[nodiscard]] bool atEnd() const { return next_ == lines_.size(); }

  bool skip(const std::string& line) {
    if (atEnd() || lines_[next_] != line) return false;
    ++next_;
    return true;
  }

  Delivery delivery(std::string& status) {
    if (skip("HS-FTP:RenameFile")) return skip("HS-FTP:PutFile OK") ? done(status) : broken();
    if (failure(kNotPut, status)) return Delivery::kNotPut;
    if (failure(kNotRenamed, status)) return Delivery::kNotRenamed;
    return Delivery::kNotTried;
  }

  [[nodiscard]] bool isBroken() const { return broken_; }

 private:
  static Delivery done(std::string& status) {
    status = "FTP:PutFile OK";
    return Delivery::kDone;
  }

  Delivery broken() {
    broken_ = true;
    return Delivery::kNotTried;
  }

  bool failure(const std::string& beginning, std::string& status) {
    if (atEnd() || !lines_[next_].starts_with(beginning)) return false;
    if (!isFailureText(lines_[next_].substr(beginning.size()))) broken_ = true;
    status = lines_[next_].substr(std::string("HS-").size());
    ++next_;
    return true;
  }

  const std::vector<std::string>& lines_;
  std::size_t next_ = 0;
  bool broken_ = false;
};

}  // namespace

RunReport reportOf(const std::vector<std::string>& log) {
  RunReport report;
  LogReader reader(log);
  if (!reader.skip(kRunLine + "Start")) return report;
  report.connected = reader.skip(kTransferLine + "Start");
  if (report.connected) {
    if (!reader.skip(kShopInfoLine + "Start")) return report;
    report.shopInfo = reader.delivery(report.lastStatus);
    if (!reader.skip(kShopInfoLine + "Exit")) return report;
    report.table = reader.delivery(report.lastStatus);
    if (!reader.skip(kTransferLine + "Exit")) return report;
  }
  report.wellFormed = reader.skip(kRunLine + "Exit") && reader.atEnd() && !reader.isBroken();
  return report;
}

bool isFailureText(const std::string& text) {
  if (text.empty()) return true;
  std::size_t digits = 0;
  while (digits < text.size() && std::isdigit(static_cast<unsigned char>(text[digits])) != 0) {
    ++digits;
  }
  const bool hasText = text.size() > digits + 1 && text[digits + 1] != ' ';
  return digits > 0 && text[digits] == '/' && hasText && characterCount(text) == kFailureWidth;
}

}  // namespace karvel
