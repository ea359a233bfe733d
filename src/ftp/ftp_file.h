#pragma once

#include <cstdint>
#include <string>

#include "text/date_time.h"

namespace karvel {

/// One entry of a remote folder.
struct FTPFile {
  static constexpr std::int32_t kFolder = 16;

  std::string FileName;       ///< as the server lists it, without path
  double FileSize = 0;        ///< bytes
  DateTime FileDate;          ///< last write time
  std::int32_t FileType = 0;  ///< kFolder, or 0 for anything else
  bool SearchEnd = false;     ///< the enumeration has no current entry: it has ended or failed
};

}  // namespace karvel
