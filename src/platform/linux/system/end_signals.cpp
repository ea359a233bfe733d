#include "platform/linux/system/end_signals.h"

#include <sys/signalfd.h>

#include <csignal>

namespace karvel {
namespace {

bool isIgnored(int number) {
  struct sigaction action {};
  return sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

EndSignals::EndSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
    if (!isIgnored(number)) sigaddset(&signals, number);
  }
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  // A reader that has gone, of standard error or of a connection, and a file that may not grow are
  // failed writes and no more.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  descriptor_ = FileDescriptor(signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC));
}

bool EndSignals::take() {
  bool arrived = false;
  signalfd_siginfo info{};
  while (read(descriptor_.get(), &info, sizeof info) == sizeof info) arrived = true;
  return arrived;
}

EndSignals& endSignals() {
  static EndSignals signals;
  return signals;
}

}  // namespace karvel
