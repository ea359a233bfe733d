#include "send/statistics_export.h"

#include "text/date_time.h"
#include "text/path.h"

namespace karvel {
namespace {

constexpr int kFirstYear = 2009;
constexpr int kMonths = 12;
constexpr int kDaysOfEveryMonth = 31;  // days that a month lacks have no files

}  // namespace

StatisticsExport::StatisticsExport(FtpForm& form, ShopInfo& shopInfo, StatisticsTable& table,
                                   Files& files, Clock& clock, RunLog& log,
                                   const std::string& programFolder)
    : form_(form),
      shopInfo_(shopInfo),
      table_(table),
      files_(files),
      clock_(clock),
      log_(log),
      programFolder_(programFolder + kSeparator) {
}

bool StatisticsExport::Make_Csv2Send(Delivery& destination) {
  log_.WriteLog("HS-FTP:----------------------------- Make_Csv2Send Start");
  shopInfo_.Ftp_ShopFold(destination);
  const bool bulk = form_.ShiftState == FtpForm::kShiftAlone;
  const bool sent = bulk ? sendEveryDay(destination) : sendCurrentDay(destination);
  log_.WriteLog("HS-FTP:----------------------------- Make_Csv2Send Exit");
  return sent;
}

bool StatisticsExport::sendCurrentDay(Delivery& destination) {
  const std::string name = madeTable("");
  return !name.empty() && deliverAndDelete(name, destination);
}

bool StatisticsExport::sendEveryDay(Delivery& destination) {
  bool lastSent = false;
  const int lastYear = clock_.now().year;
  for (int year = kFirstYear; year <= lastYear; ++year) {
    for (int month = 1; month <= kMonths; ++month) {
      for (int day = 1; day <= kDaysOfEveryMonth; ++day) {
        const std::string name = madeTable(formatDayKey(year, month, day));
        if (name.empty()) continue;
        form_.MsgLabel.setCaption(name + " 転送");
        lastSent = deliverAndDelete(name, destination);
      }
    }
  }
  return lastSent;
}

std::string StatisticsExport::madeTable(const std::string& dateKey) {
  const std::string name = table_.Make_StatFile(dateKey);
  return !name.empty() && files_.exists(programFolder_ + name) ? name : std::string();
}

bool StatisticsExport::deliverAndDelete(const std::string& name, Delivery& destination) {
  const bool delivered = destination.putFile(programFolder_, name);
  files_.remove(programFolder_ + name);
  return delivered;
}

}  // namespace karvel
