#pragma once

#include <chrono>
#include <string>

#include "selftest/test_result.h"

namespace karvel {

/// Runs a program in its own folder to its end, without a window, and ends it with all that it has
/// started when its time is up. What it prints is kept in `outputFile` meanwhile. Paths and
/// arguments are UTF-8.
Ending runChild(const std::string& program, const std::string& arguments,
                const std::string& outputFile, std::chrono::seconds limit);

}  // namespace karvel
