#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/files.h"
#include "platform/instance.h"
#include "platform/internet.h"
#include "platform/profile.h"

namespace karvel {

inline constexpr std::uint32_t kNoLimit = UINT32_MAX;

// The real implementations of the ports on the platform that the tests run on.
std::unique_ptr<Files> makeFiles();
std::unique_ptr<Profile> makeProfile();
std::unique_ptr<Instance> makeInstance();
/// Its time limits, in milliseconds, are never longer than `longestLimit` is then, whatever its
/// user asks for: a test need not wait as long as a shop would.
std::unique_ptr<Internet> makeInternet(const std::uint32_t& longestLimit = kNoLimit);

/// What makeInternet() makes.
template <typename Library>
class ImpatientInternet final : public Library {
 public:
  explicit ImpatientInternet(const std::uint32_t& longestLimit) : longestLimit_(longestLimit) {}

  bool setOption(Internet::Handle root, std::uint32_t option, std::uint32_t milliseconds) override {
    return Library::setOption(root, option, std::min(milliseconds, longestLimit_));
  }

 private:
  const std::uint32_t& longestLimit_;
};

/// Where the library below a port may do less than the port promises, and a shop still sends.
enum class Difference {
  kTimeLimitsDoNotHold,            ///< nor can another thread break a call off
  kReplyIsItsLastLine,             ///< of several
  kLostConnectionHasOtherNumbers,  ///< those of its own state, or of the socket layer
  kSendsMoreCommands,              ///< eight in a run that replaces two files
  kNoIpv6,
  kNamesPassThroughCodePage932,  ///< and lose what that lacks
  kListedNameEndsAtABlank,
  kFolderNameEndsAtAQuote,
  kNoInputMethod,
  kMenuEndsLate,          ///< not before its own loop has control again
  kGreetingIsNotChecked,  ///< for its code
};

/// Asked by a test that has met one. True where the platform's library is known for it, on Windows:
/// there it is named in the test's output, for the self-test's page.
bool isKnown(Difference difference);

/// What a test expects of a text that is `found`: what is promised, or what a known difference
/// makes of it.
inline std::string expected(const std::string& promised, const std::string& found,
                            Difference difference, const std::string& instead) {
  return found == instead && isKnown(difference) ? instead : promised;
}

}  // namespace karvel
