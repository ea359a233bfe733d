#pragma once

#include <optional>
#include <string_view>

#include "text/date_time.h"

namespace karvel {

/// Takes the date of an `ls -l` line and the one blank behind it off the front of `text`: "Nov  6
/// 14:21", "Nov 6 1996", "6 Nov 1996", "1996-11-06 14:21", and as servers at home write it, "11月
/// 6日 14:21" or "11月6日 1996年". Without a year it is the latest such date that does not lie
/// after `now`. Empty, with an undefined rest of `text`, when it does not begin with a date.
std::optional<DateTime> takeUnixDate(std::string_view& text, const DateTime& now);

/// The same for the MS-DOS style: "11-06-96  02:21PM" or "11-06-1996  14:21". The blanks behind it
/// stay.
std::optional<DateTime> takeDosDate(std::string_view& text);

}  // namespace karvel
