#pragma once

#include <chrono>
#include <functional>
#include <span>
#include <string>

namespace karvel {

/// Takes down what a probe observes, a line at a time.
using Note = std::function<void(const std::string&)>;

/// What can only be found out on a real system. Nothing here passes or fails.
struct Question {
  const char* name;  ///< on the command line
  const char* text;
  /// Tries it out; the answer in one sentence. `limit` is the time limit that FTP sessions have.
  std::string (*ask)(const Note& note, std::chrono::milliseconds limit);
};

std::span<const Question> questions();

// Each question's probe.
std::string askListingCache(const Note& note, std::chrono::milliseconds limit);
std::string askTimeLimits(const Note& note, std::chrono::milliseconds limit);
std::string askPassiveMode(const Note& note, std::chrono::milliseconds limit);
std::string askRefusals(const Note& note, std::chrono::milliseconds limit);
std::string askProfileLines(const Note& note, std::chrono::milliseconds limit);
std::string askTrayIcon(const Note& note, std::chrono::milliseconds limit);
/// Of the program that is started as the user signs in.
std::string askTrayIconAtSignIn(const Note& note, std::chrono::milliseconds limit);

}  // namespace karvel
