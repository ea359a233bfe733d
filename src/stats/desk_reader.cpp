#include "stats/desk_reader.h"

#include <utility>

#include "stats/reception_tally.h"
#include "text/line_splitter.h"
#include "text/path.h"

namespace karvel {

DeskReader::DeskReader(Files& files, IniRedWrt& settings, std::string programFolder)
    : files_(files), settings_(settings), programFolder_(std::move(programFolder)) {
}

DeskFigures DeskReader::Read_DeskFile(const std::string& dayKey, int desk) {
  ReceptionTally tally;
  LineSplitter lines;
  const auto takeLine = [&](std::string_view line) { tally.addLine(line); };
  // If reading fails midway, what has been read counts.
  static_cast<void>(
      files_.readPieces(workFile(dayKey + "_" + std::to_string(desk) + ".tmp"),
                        [&](std::string_view piece) { lines.feed(piece, takeLine); }));
  lines.finish(takeLine);
  return tally.figures();
}

std::string DeskReader::businessDayKey() {
  return settings_.read(ticket::kBusinessDay);
}

bool DeskReader::hasDay(const std::string& dayKey) {
  return files_.exists(workFile(dayKey + ".tmp"));
}

std::string DeskReader::workFile(const std::string& name) const {
  return joinPath(joinPath(programFolder_, "temp"), name);
}

}  // namespace karvel
