#pragma once

#include <string>

#include "platform/clock.h"
#include "platform/files.h"
#include "send/delivery.h"
#include "send/shop_info.h"
#include "stats/statistics_table.h"
#include "store/run_log.h"
#include "ui/ftp_form.h"

namespace karvel {

/// The transfer step of a send run.
class StatisticsExport {
 public:
  StatisticsExport(FtpForm& form, ShopInfo& shopInfo, StatisticsTable& table, Files& files,
                   Clock& clock, RunLog& log, const std::string& programFolder);

  /// Delivers the shop information file and the statistics of the current business day; with Shift
  /// alone held at the last key event on the main form, the statistics of every day from
  /// 2009-01-01 to the end of this year for which a table can be made. True when the last
  /// statistics file that was made reached the destination.
  [[nodiscard]] bool Make_Csv2Send(Delivery& destination);

 private:
  [[nodiscard]] bool sendCurrentDay(Delivery& destination);
  [[nodiscard]] bool sendEveryDay(Delivery& destination);
  /// The name of a day's table in the program's folder, or "".
  [[nodiscard]] std::string madeTable(const std::string& dateKey);
  [[nodiscard]] bool deliverAndDelete(const std::string& name, Delivery& destination);

  FtpForm& form_;
  ShopInfo& shopInfo_;
  StatisticsTable& table_;
  Files& files_;
  Clock& clock_;
  RunLog& log_;
  std::string programFolder_;  ///< ends in the separator
};

}  // namespace karvel
