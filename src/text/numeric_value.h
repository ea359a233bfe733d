#pragma once

#include <string>
#include <string_view>

namespace karvel {

/// The number that a text begins with, 0 when it begins with none.
///
/// Blanks, tabs and line feeds anywhere in the text are ignored. A number is an optional sign,
/// digits with an optional decimal point, and an optional exponent ("e" or "d", either case), or
/// the prefix &H or &O and digits of that base. The point is always "." and a magnitude beyond the
/// type's range becomes its largest finite value, so the result is never infinite.
double numericValue(std::string_view text);

/// numericValue() to the nearest whole number, a half away from zero, kept within 32 bits.
int wholeNumericValue(std::string_view text);

/// A finite number, rounded to a whole one, in decimal digits however many they are.
std::string decimalText(double number);

}  // namespace karvel
