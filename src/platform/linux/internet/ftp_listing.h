#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "text/date_time.h"

namespace karvel {

/// One entry of a remote folder.
struct ListedEntry {
  std::string name;         ///< bytes of code page 932, at most 259
  std::string writtenName;  ///< as the server writes it, where that is not the same
  bool folder = false;
  std::uint64_t size = 0;
  DateTime time;
};

/// One line of a LIST reply, without its line end: `ls -l` in its variants, English or Japanese
/// dates (code page 932, EUC-JP or UTF-8), or the MS-DOS style. Empty for any other line, and for
/// names that are empty or hold control characters, "/" or "\".
///
/// A symbolic link counts as a file under its own name, as nothing tells what it leads to, unless
/// its target ends with "/". A date without a year is the latest one that does not lie after `now`.
std::optional<ListedEntry> parseListingLine(std::string_view line, const DateTime& now);

/// A whole LIST reply, read entry by entry, so that a long one needs no more memory than its text.
class FtpListing {
 public:
  FtpListing(std::string text, const DateTime& now) : text_(std::move(text)), now_(now) {}

  /// The next entry; lines that are none are skipped. Empty at the end.
  std::optional<ListedEntry> next();

 private:
  std::string text_;
  DateTime now_;
  std::size_t position_ = 0;
};

}  // namespace karvel
