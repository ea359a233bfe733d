#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace karvel {

/// How a program that was started has ended, and what it has printed until then.
struct Ending {
  std::string output;
  std::optional<std::uint32_t> exitCode;  ///< empty when it was not started or had to be stopped
  std::string trouble;                    ///< why there is no exit code
  int seconds = 0;
};

struct TestFailure {
  std::string test;
  std::string text;
};

/// What one test program tells, as far as it came.
struct TestResult {
  std::string program;
  int planned = 0;
  int passed = 0;
  int skipped = 0;
  std::vector<TestFailure> failures;
  /// Where the system's libraries differ from what is expected, as the tests name it.
  std::vector<std::string> differences;
  /// How it ended, when not as a test program does that has run all its tests.
  std::string trouble;
  int seconds = 0;

  [[nodiscard]] bool good() const { return failures.empty() && trouble.empty(); }
};

/// Reads GoogleTest's output. A test in which the program ends counts as failed.
TestResult testResultOf(const std::string& program, const Ending& ending);

/// The lines of an output as UTF-8 without control characters, whatever its bytes are.
std::vector<std::string> readableLines(std::string_view output);

/// In words: that a program has ended with that code, or why it has none.
std::string describe(const Ending& ending);

}  // namespace karvel
