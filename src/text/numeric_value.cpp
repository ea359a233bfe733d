#include "text/numeric_value.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <locale>
#include <sstream>
#include <string>

namespace karvel {
namespace {

bool isIgnored(char c) {
  return c == ' ' || c == '\t' || c == '\n';
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isSign(char c) {
  return c == '+' || c == '-';
}

/// The value of a digit in the given base, or -1.
int digitValue(char c, int base) {
  int value = -1;
  if (isDigit(c)) value = c - '0';
  if (c >= 'a' && c <= 'f') value = c - 'a' + 10;
  if (c >= 'A' && c <= 'F') value = c - 'A' + 10;
  return value < base ? value : -1;
}

/// The base that a prefix &H or &O announces, or 0.
int prefixedBase(std::string_view text) {
  if (text.size() < 2 || text[0] != '&') return 0;
  if (text[1] == 'H' || text[1] == 'h') return 16;
  if (text[1] == 'O' || text[1] == 'o') return 8;
  return 0;
}

double prefixedValue(std::string_view digits, int base) {
  constexpr double kLargest = std::numeric_limits<double>::max();
  double value = 0;
  for (const char c : digits) {
    const int digit = digitValue(c, base);
    if (digit < 0) break;
    value = std::min(value * base + digit, kLargest);
  }
  return value;
}

std::size_t digitsFrom(std::string_view text, std::size_t position) {
  while (position < text.size() && isDigit(text[position])) ++position;
  return position;
}

/// Where the exponent that begins at `position` ends; `position` itself when there is none.
std::size_t exponentFrom(std::string_view text, std::size_t position) {
  constexpr std::string_view kMarks = "eEdD";
  if (position >= text.size() || kMarks.find(text[position]) == std::string_view::npos) {
    return position;
  }
  std::size_t digits = position + 1;
  if (digits < text.size() && isSign(text[digits])) ++digits;
  const std::size_t end = digitsFrom(text, digits);
  return end > digits ? end : position;
}

/// The longest leading decimal number of `text`; no number at all when it has no digits.
std::string leadingNumber(std::string_view text) {
  const std::size_t begin = !text.empty() && isSign(text[0]) ? 1 : 0;
  std::size_t end = digitsFrom(text, begin);
  if (end < text.size() && text[end] == '.') end = digitsFrom(text, end + 1);
  const std::size_t exponent = end;
  end = exponentFrom(text, exponent);

  std::string number(text.substr(0, end));
  if (end > exponent) number[exponent] = 'e';
  return number;
}

}  // namespace

double numericValue(std::string_view text) {
  std::string compact;
  std::copy_if(text.begin(), text.end(), std::back_inserter(compact),
               [](char c) { return !isIgnored(c); });

  if (const int base = prefixedBase(compact)) {
    return prefixedValue(std::string_view(compact).substr(2), base);
  }
  // A number beyond the type's range reads as the largest value or as 0, what is no number as 0.
  std::istringstream stream(leadingNumber(compact));
  stream.imbue(std::locale::classic());
  double value = 0;
  stream >> value;
  return value;
}

int wholeNumericValue(std::string_view text) {
  constexpr double kLowest = std::numeric_limits<int>::min();
  constexpr double kHighest = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(std::round(numericValue(text)), kLowest, kHighest));
}

std::string decimalText(double number) {
  std::array<char, std::numeric_limits<double>::max_exponent10 + 3> digits{};
  const double whole = std::round(number) + 0.0;  // no "-0"
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), whole,
                                 std::chars_format::fixed, 0);
  return {digits.data(), end.ptr};
}

}  // namespace karvel
