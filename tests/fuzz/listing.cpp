#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz.h"
#include "platform/linux/internet/ftp_listing.h"
#include "platform/linux/internet/listing_date.h"

namespace karvel::fuzz {
namespace {

constexpr DateTime kNow{2024, 2, 29, 23, 59, 59};

bool exists(const DateTime& time) {
  constexpr int kDays[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return time.year >= 0 && time.month >= 1 && time.month <= 12 && time.day >= 1 &&
         time.day <= kDays[time.month - 1] && time.hour >= 0 && time.hour < 24 &&
         time.minute >= 0 && time.minute < 60 && time.second >= 0 && time.second < 60;
}

std::vector<std::string> namesIn(FtpListing& listing, std::size_t bytes) {
  std::vector<std::string> names;
  while (const auto entry = listing.next()) {
    require(!entry->name.empty() && entry->name.size() <= bytes && exists(entry->time));
    require(entry->name.find_first_of(std::string_view("\0\r\n\x1B", 4)) == std::string::npos);
    names.push_back(entry->name);
  }
  return names;
}

}  // namespace

/// Names are plain, dates exist, and the pieces in which a listing arrives make no difference.
void tryInput(FuzzedDataProvider& input) {
  const std::size_t piece = input.ConsumeIntegralInRange<std::size_t>(1, 64);
  const std::string text = input.ConsumeRemainingBytesAsString();
  FtpListing whole(kNow);
  FtpListing pieces(kNow);
  whole.append(text);
  for (std::size_t at = 0; at < text.size(); at += piece) pieces.append(text.substr(at, piece));
  require(namesIn(whole, text.size()) == namesIn(pieces, text.size()));

  std::string_view rest = text;
  const auto unixDate = takeUnixDate(rest, kNow);
  require(!unixDate || exists(*unixDate));
  require(text.ends_with(rest) && (unixDate.has_value() || rest.size() == text.size()));
  rest = text;
  const auto dosDate = takeDosDate(rest);
  require(!dosDate || exists(*dosDate));
}

}  // namespace karvel::fuzz
