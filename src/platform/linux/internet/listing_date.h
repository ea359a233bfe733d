#pragma once

#include <optional>
#include <string_view>

#include "text/date_time.h"

namespace karvel {

/// Takes the date of an `ls -l` line off the front of `text`, and the one blank that ends it (two
/// behind a left-aligned year):
///
///     Nov  6 14:21        6 Nov 2025        Nov 6 14:21:30 2025      Fri Nov  6 14:21:30 2025
///     11月 6日 14時21分   11月6日 2025年    2025年 11月 6日          11/ 6 14:21
///     11月 6日 午後 2:21  令和7年11月6日    2025-Nov-06
///     2025-11-06 14:21:30.5 +0900           06.11.2025 14:21         01-jun-99
///
/// Japanese signs are read in UTF-8, code page 932 and EUC-JP. The time is taken as it stands; a
/// zone is read over. Without a year it is the latest such date that lies no more than a day ahead
/// of `now`. Empty, with `text` unchanged, when it does not begin with a date that exists.
std::optional<DateTime> takeUnixDate(std::string_view& text, const DateTime& now);

/// The same for the date of an MS-DOS line: "11-06-96  02:21PM", "2025/11/06 14:21:30", "97-11-06".
/// Blanks behind it stay.
std::optional<DateTime> takeDosDate(std::string_view& text);

}  // namespace karvel
