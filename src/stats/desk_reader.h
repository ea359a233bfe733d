#pragma once

#include <string>

#include "platform/files.h"
#include "stats/desk_figures.h"
#include "store/settings_store.h"

namespace karvel {

/// Reads the reception files of the ticket application: "<day key>_<desk>.tmp" in the folder
/// "temp" of the program's folder, one record per line (see ReceptionTally), in code page 932.
class DeskReader {
 public:
  DeskReader(Files& files, IniRedWrt& settings, std::string programFolder);

  /// The figures of a desk (1 to 6) on the day of the given key. A file that is missing or cannot
  /// be opened gives zeros; if reading fails midway, what has been read counts.
  [[nodiscard]] DeskFigures Read_DeskFile(const std::string& dayKey, int desk);

  /// The key of the current business day, unchecked.
  [[nodiscard]] std::string businessDayKey();

  /// True when the ticket application has kept the day of that key.
  [[nodiscard]] bool hasDay(const std::string& dayKey);

 private:
  [[nodiscard]] std::string workFile(const std::string& name) const;

  Files& files_;
  IniRedWrt& settings_;
  std::string programFolder_;
};

}  // namespace karvel
