#pragma once

#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/files.h"

namespace karvel {

/// The run log: one file per day, "yymmdd.log", in the folder "Log" of the program's folder. Where
/// that folder is missing nothing is logged; it is not made.
class RunLog {
 public:
  RunLog(Files& files, Clock& clock, const std::string& programFolder);

  /// Appends "yyyy/mm/dd hh:mm:ss", TAB, the message and CR LF in code page 932. Control
  /// characters in the message become blanks. Failures are ignored.
  void WriteLog(std::string_view message);

 private:
  Files& files_;
  Clock& clock_;
  std::string folder_;
};

}  // namespace karvel
