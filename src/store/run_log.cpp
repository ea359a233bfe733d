#include "store/run_log.h"

#include <algorithm>

#include "text/code_page.h"
#include "text/path.h"

namespace karvel {
namespace {

/// A server's answer may have several lines; a line of the log stays one.
std::string inOneLine(std::string_view message) {
  std::string line(message);
  std::replace_if(
      line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
  return line;
}

}  // namespace

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
