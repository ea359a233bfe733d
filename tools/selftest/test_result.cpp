#include "selftest/test_result.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <sstream>

#include "text/server_text.h"
#include "text/strings.h"

namespace karvel {
namespace {

constexpr std::string_view kPlan = "[==========] Running ";
constexpr std::string_view kBegin = "[ RUN      ] ";
constexpr std::string_view kPassed = "[       OK ] ";
constexpr std::string_view kFailed = "[  FAILED  ] ";
constexpr std::string_view kSkipped = "[  SKIPPED ] ";
constexpr std::string_view kDiffers = "[ DIFFERS  ] ";
constexpr std::uint32_t kFailures = 1;  ///< exit code

/// Goes through the output line by line.
class Reader {
 public:
  explicit Reader(TestResult& result) : result_(result) {}

  void read(const std::string& line) {
    const std::string_view text = line;
    if (text.starts_with(kPlan)) {
      const auto* const number = text.data() + kPlan.size();
      std::from_chars(number, text.data() + text.size(), result_.planned);
    } else if (text.starts_with(kBegin)) {
      test_ = text.substr(kBegin.size());
      said_.clear();
    } else if (text.starts_with(kDiffers)) {
      noteDifference(line.substr(kDiffers.size()));
    } else if (test_.empty()) {
      return;  // around the tests, the list of failures at the end among it
    } else if (text.starts_with(kPassed)) {
      ++result_.passed;
      test_.clear();
    } else if (text.starts_with(kSkipped)) {
      ++result_.skipped;
      test_.clear();
    } else if (text.starts_with(kFailed)) {
      fail();
    } else {
      said_ += line + "\n";
    }
  }

  void end() {
    if (test_.empty()) return;
    said_ += "(この試験の途中でプログラムが終わりました)\n";
    fail();
  }

 private:
  void fail() {
    result_.failures.push_back({test_, said_});
    test_.clear();
  }

  void noteDifference(const std::string& difference) {
    auto& known = result_.differences;
    if (std::find(known.begin(), known.end(), difference) == known.end()) {
      known.push_back(difference);
    }
  }

  TestResult& result_;
  std::string test_;  ///< that runs
  std::string said_;  ///< by it
};

}  // namespace

TestResult testResultOf(const std::string& program, const Ending& ending) {
  TestResult result;
  result.program = program;
  result.seconds = ending.seconds;
  Reader reader(result);
  for (const std::string& line : readableLines(ending.output)) reader.read(line);
  reader.end();
  const int told = result.passed + result.skipped + static_cast<int>(result.failures.size());
  const bool usualCode =
      ending.exitCode == 0U || (ending.exitCode == kFailures && !result.failures.empty());
  if (!usualCode || told != result.planned || told == 0) result.trouble = describe(ending);
  return result;
}

std::vector<std::string> readableLines(std::string_view output) {
  std::vector<std::string> lines;
  std::istringstream stream{std::string(output)};
  for (std::string line; std::getline(stream, line);) {
    if (line.ends_with('\r')) line.pop_back();
    lines.push_back(inOneLine(textOfServer(line)));
  }
  return lines;
}

std::string describe(const Ending& ending) {
  if (!ending.exitCode) return ending.trouble;
  char code[32];
  std::snprintf(code, sizeof code, "%u (0x%08X)", *ending.exitCode, *ending.exitCode);
  return std::string("終了コード ") + code;
}

}  // namespace karvel
