#pragma once

#include <string>

#include "platform/internet.h"

namespace karvel {

/// A short Japanese text for the error numbers that can occur here; empty for all others.
std::string systemMessage(Internet::ErrorNumber number);

}  // namespace karvel
