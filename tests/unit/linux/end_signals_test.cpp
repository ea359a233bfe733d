#include "platform/linux/system/end_signals.h"

#include <gtest/gtest.h>

#include <csignal>

namespace karvel {
namespace {

TEST(EndSignals, LeaveAnIgnoredSignalIgnored) {
  sigset_t before;
  sigprocmask(SIG_SETMASK, nullptr, &before);
  const auto handler = std::signal(SIGHUP, SIG_IGN);
  EndSignals signals;
  std::raise(SIGHUP);
  EXPECT_FALSE(signals.take());
  std::raise(SIGTERM);
  EXPECT_TRUE(signals.take());
  std::signal(SIGHUP, handler);
  sigprocmask(SIG_SETMASK, &before, nullptr);
}

}  // namespace
}  // namespace karvel
