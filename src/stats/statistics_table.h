#pragma once

#include <string>

#include "platform/clock.h"
#include "platform/files.h"
#include "stats/desk_reader.h"
#include "store/settings_store.h"
#include "ui/ftp_form.h"

namespace karvel {

/// Writes the statistics file of a day: a header line and one row of 23 TAB-separated fields per
/// reception desk, in code page 932 with CR LF line ends.
class StatisticsTable {
 public:
  StatisticsTable(const FtpForm& form, DeskReader& desks, IniRedWrt& settings, Files& files,
                  Clock& clock, std::string programFolder);

  /// Makes "<shop code>_<day key>.txt" in the program's folder, replacing an older one, and
  /// returns its name; "" when there is no shop code, no such day, a path or ".." in the name, or
  /// the file cannot be written. An empty date key is the current business day. A table of an
  /// earlier day ("yymmdd") draws on that day's own files and carries its date.
  [[nodiscard]] std::string Make_StatFile(const std::string& dateKey);

 private:
  struct Day {
    std::string key;
    std::string date;  ///< "yyyy/mm/dd"
    std::string time;  ///< "hh:mm:ss"
  };

  [[nodiscard]] Day dayOf(const std::string& dateKey);
  [[nodiscard]] int deskCount();
  [[nodiscard]] std::string row(const Day& day, int desk);

  const FtpForm& form_;
  DeskReader& desks_;
  IniRedWrt& settings_;
  Files& files_;
  Clock& clock_;
  std::string programFolder_;
};

}  // namespace karvel
