#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "platform/internet.h"

namespace karvel {

/// One line of a LIST reply, without its line end: `ls -l` and its many relatives, NetWare, modes
/// in digits, MS-DOS and Windows NT, OS/2, and EPLF. Empty for every other line (sums, headings,
/// messages) and for names with control characters. A date that cannot be read is 1601-01-01.
///
/// A symbolic link counts as a folder, under its own name: nothing tells what it leads to, and a
/// target folder is often one. The marks that `ls -F` puts behind names are no part of them.
std::optional<Internet::FindData> parseListingLine(std::string_view line, const DateTime& now);

/// A LIST reply, read entry by entry. What has been read takes no more memory.
class FtpListing {
 public:
  /// Dates without a year are read as of `now`.
  explicit FtpListing(const DateTime& now) : now_(now) {}

  /// The next bytes of the reply.
  void append(std::string_view bytes) { blocks_.emplace_back(bytes); }

  /// The next entry; lines that are none are skipped. Empty at the end.
  std::optional<Internet::FindData> next();

  /// True when next() has met lines, none of which it could read: this folder is not empty, its
  /// listing is in no known format.
  [[nodiscard]] bool unreadable() const { return strangeLine_ && !anyEntry_; }

 private:
  std::optional<Internet::FindData> endLine();

  DateTime now_;
  std::deque<std::string> blocks_;
  std::size_t position_ = 0;  ///< in the first block
  std::string line_;          ///< what has been read of a line; cut when it is too long for one
  bool anyEntry_ = false;
  bool strangeLine_ = false;
};

}  // namespace karvel
