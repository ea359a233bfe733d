#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>

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

/// Where the library below a port does not do what the system does that it stands for. Wine is the
/// only such library that is known; on Linux nothing differs. A test that meets one of these
/// expects what is really there, and so speaks up when that changes.
enum class Difference {
  // Wine's WinINet waits 30 seconds for a line of the server, and without end for a transfer,
  // whatever limits are set, and no other thread can break its calls off. A send run takes half a
  // second there, too. So servers that fall silent or speak no FTP are tried where the limits hold,
  // and a run is broken off in fewer of the ways that need none.
  kTimeLimitsDoNotHold,
  // Of a reply of several lines it keeps the last one.
  kReplyIsItsLastLine,
  // It gives the numbers of its own state or of the socket layer when the server is gone.
  kLostConnectionHasOtherNumbers,
  // It sends eight commands more in a run that replaces two files.
  kSendsMoreCommands,
  // It knows no IPv6 address.
  kNoIpv6,
  // It keeps names as UTF-16 and so loses what is no code page 932.
  kNamesPassThroughCodePage932,
  // It reads a listing's line, and the current folder's name, in a simpler way.
  kListedNameEndsAtABlank,
  kFolderNameEndsAtAQuote,
  // On its screen that nobody sees there is no input method.
  kNoInputMethod,
  // A menu that is told to end stays on the screen until its own loop has control again.
  kMenuEndsLate,
};

bool differsHere(Difference difference);

}  // namespace karvel
