#include "form/text_entry.h"

#include <algorithm>
#include <string>

#include "fuzz/fuzz.h"
#include "text/strings.h"

namespace karvel::fuzz {
namespace {

/// UTF-8, as every toolkit hands it over.
std::string text(FuzzedDataProvider& input) {
  std::string text;
  while (input.remaining_bytes() > 0) {
    text += input.PickValueInArray({"0",      "9",        "a",          " ",      "-",
                                    "\t",     "\r\n",     "\x1B",       "\x7F",   "\u0085",
                                    "\u00A0", "\u2028",   "\u2029",     "\u3000", "表",
                                    "ｿ",      "か\u3099", "\U0001F600", "\uFEFF", "１"});
  }
  return text;
}

}  // namespace

/// Whatever is typed or pasted: what enters is a part of it that the field may hold, and enters
/// again.
void tryInput(FuzzedDataProvider& input) {
  ControlRow row;
  row.style = input.ConsumeBool() ? ControlRow::kDigitsOnly : ControlRow::kPlain;
  row.maxLength = input.ConsumeIntegralInRange(0, 12);
  const std::size_t staying = input.ConsumeIntegralInRange<std::size_t>(0, 14);
  const std::string pasted = text(input);
  const std::string entered = acceptedInsertion(row, pasted, staying);
  const auto limit = static_cast<std::size_t>(row.maxLength);
  require(entered.empty() || limit == 0 || staying + characterCount(entered) <= limit);
  require(entered.find_first_of("\r\n\t\x1B\x7F") == std::string::npos);
  require((row.style & ControlRow::kDigitsOnly) == 0 ||
          entered.find_first_not_of("0123456789") == std::string::npos);
  require(acceptedInsertion(row, entered, staying) == entered);
  auto from = pasted.begin();
  for (const char c : entered) {
    from = std::find(from, pasted.end(), c);
    require(from != pasted.end());
    ++from;
  }
}

}  // namespace karvel::fuzz
