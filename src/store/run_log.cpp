#include "store/run_log.h"

#include "text/code_page.h"
#include "text/path.h"
#include "text/strings.h"

namespace karvel {

RunLog::RunLog(Files& files, Clock& clock, const std::string& programFolder)
    : files_(files), clock_(clock), folder_(joinPath(programFolder, "Log")) {
}

void RunLog::WriteLog(std::string_view message) {
  const DateTime day = clock_.now();
  const std::string path = joinPath(folder_, formatDayKey(day.year, day.month, day.day) + ".log");
  const DateTime moment = clock_.now();
  const std::string line =
      formatDate(moment) + " " + formatTime(moment) + "\t" + inOneLine(message) + "\r\n";
  static_cast<void>(files_.append(path, toCodePage932(line)));
}

}  // namespace karvel
