#pragma once

#include <string>
#include <utility>
#include <vector>

#include "selftest/test_result.h"

namespace karvel {

/// What was found out about one question to the system.
struct Answer {
  std::string question;
  std::string conclusion;
  std::vector<std::string> observations;
};

/// The output of a question's program: observations, and a conclusion behind kConclusion.
inline constexpr std::string_view kConclusion = "=> ";
Answer answerOf(const std::string& question, const Ending& ending);

/// What a self-test tells its developers, as one page that can be mailed and printed.
struct Page {
  std::vector<std::pair<std::string, std::string>> facts;
  std::vector<TestResult> results;
  std::vector<Answer> answers;

  [[nodiscard]] bool good() const;
  /// One sentence.
  [[nodiscard]] std::string summary() const;
  [[nodiscard]] std::string html() const;
};

}  // namespace karvel
