#pragma once

namespace karvel {

/// Where the library below a port does not do what the system does that it stands for. Wine is the
/// only such library that is known; on Linux nothing differs. A test that meets one of these
/// expects what is really there, and so speaks up when that changes.
enum class Difference {
  // Wine's WinINet waits 30 seconds for a line of the server, and without end for a transfer,
  // whatever time limits are set. Closing the session's handle from another thread, the documented
  // way to break a call off, does not reach the call. A send run takes half a second there, too. So
  // servers that fall silent or speak no FTP are tried where the limits hold, and a run is broken
  // off in fewer of the ways that need none.
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
