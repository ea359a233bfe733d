#include <gtest/gtest.h>

#include <chrono>
#include <future>

#include "contract/internet_fixture.h"
#include "contract/known_differences.h"

namespace karvel {
namespace {

using std::chrono::milliseconds;

class InternetTimeLimits : public InternetTest {
 protected:
  static constexpr std::uint32_t kLimit = 300;  ///< milliseconds
  static constexpr milliseconds kAtMost{3000};  ///< for any call, however busy the machine is

  InternetTimeLimits() { setTimeLimits(kLimit); }

  /// Runs a call that must fail, and fail in time; its error number. A library that does not keep
  /// to the limits is still waiting then: the server hangs up, and the number is a time-out's.
  template <typename Call>
  Internet::ErrorNumber errorOf(Call call) {
    auto succeeded = std::async(std::launch::async, [&] { return static_cast<bool>(call()); });
    const bool waits = differsHere(Difference::kTimeLimitsDoNotHold);
    const bool ended =
        succeeded.wait_for(waits ? kWellOverLimit : kAtMost) == std::future_status::ready;
    EXPECT_EQ(ended, !waits);
    if (!ended) server_.hangUp();
    EXPECT_FALSE(succeeded.get());
    return waits ? Internet::kErrorTimeout : internet_->lastError();
  }

 private:
  static constexpr milliseconds kWellOverLimit{600};
};

/// However it is done, nobody waits longer than this for a server that is silent.
TEST_F(InternetTimeLimits, EndTheWaitByThemselves) {
  constexpr milliseconds kLongest{40'000};
  const Handle session = connect();
  server_.on("PWD", ScriptedFtpServer::kEvery, FtpFault::stall());
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(internet_->currentDirectory(session), std::nullopt);
  EXPECT_EQ(internet_->lastError(), Internet::kErrorTimeout);
  const bool waits = differsHere(Difference::kTimeLimitsDoNotHold);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, waits ? kLongest : kAtMost);
}

TEST_F(InternetTimeLimits, ASilentServerAtLogin) {
  for (const char* command : {ScriptedFtpServer::kGreeting, "USER", "PASS"}) {
    server_.behave();
    server_.on(command, 1, FtpFault::stall());
    EXPECT_EQ(errorOf([&] { return connect(); }), Internet::kErrorTimeout) << command;
  }
}

TEST_F(InternetTimeLimits, AServerThatSpeaksNoFtp) {
  if (differsHere(Difference::kTimeLimitsDoNotHold)) return;  // waits for it without an end
  for (const auto& [name, greeting] : kForeignGreetings) {
    server_.behave();
    server_.on(ScriptedFtpServer::kGreeting, 1, greeting);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(connect(), 0U) << name;
    EXPECT_NE(internet_->lastError(), 0U) << name;
    EXPECT_LT(std::chrono::steady_clock::now() - begin, kAtMost) << name;
  }
}

TEST_F(InternetTimeLimits, ASilentServerInASession) {
  server_.tree().addFile("/x", "x");
  const struct {
    const char* command;
    FtpFault fault;
  } cases[] = {
      {"PASV", FtpFault::stall()},
      {"TYPE", FtpFault::stall()},
      {"STOR", FtpFault::stall()},
      {"STOR", FtpFault::stallTransfer(3)},
  };
  for (const auto& testCase : cases) {
    server_.behave();
    server_.on(testCase.command, 1, testCase.fault);
    const Handle session = connect();
    ASSERT_NE(session, 0U);
    EXPECT_EQ(errorOf([&] { return put(session, "abcdef", "x"); }), Internet::kErrorTimeout)
        << testCase.command;
    EXPECT_FALSE(internet_->deleteFile(session, "x")) << "no late reply may answer this";
    EXPECT_TRUE(internet_->close(session));
  }
  EXPECT_TRUE(server_.tree().isFile("/x"));
}

TEST_F(InternetTimeLimits, AServerThatStopsReadingOrWriting) {
  server_.tree().addFile("/x", "x");
  server_.on("STOR", 1, FtpFault::stallTransfer(1000));
  Handle session = connect();
  std::string large;
  for (int i = 0; i < 2'000'000; ++i) large += "ten bytes.";
  EXPECT_EQ(errorOf([&] { return put(session, large, "x"); }), Internet::kErrorTimeout);
  server_.on("LIST", 1, FtpFault::stallTransfer(10));
  session = connect();
  Internet::FindData entry;
  EXPECT_EQ(errorOf([&] { return internet_->findFirst(session, "*.*", entry); }),
            Internet::kErrorTimeout);
}

TEST_F(InternetTimeLimits, ASlowServerIsNoSilentOne) {
  const auto slow = FtpFault::delay(milliseconds{kLimit / 2});
  for (const char* command : {"USER", "PASS", "PWD", "PASV", "TYPE", "STOR"}) {
    server_.on(command, ScriptedFtpServer::kEvery, slow);
  }
  const Handle session = connect();
  ASSERT_NE(session, 0U) << internet_->lastError();
  EXPECT_TRUE(put(session, "x", "x")) << internet_->lastError();
}

TEST_F(InternetTimeLimits, AnActiveConnectionMayComeLateButNotTooLate) {
  server_.tree().addFile("/x", "x");
  for (const char* command : {"LIST", "STOR"}) {
    server_.on(command, 1, FtpFault::lateConnection(milliseconds{kLimit / 3}));
    server_.on(command, 2, FtpFault::lateConnection(5 * milliseconds{kLimit}));
  }
  Handle session = connect(0);
  EXPECT_EQ(list(session), (Names{"x"})) << internet_->lastError();
  EXPECT_TRUE(put(session, "y", "y")) << internet_->lastError();
  Internet::FindData entry;
  EXPECT_EQ(errorOf([&] { return internet_->findFirst(session, "*.*", entry); }),
            Internet::kErrorTimeout);
  EXPECT_FALSE(internet_->deleteFile(session, "x")) << "no late reply may answer this";
  EXPECT_TRUE(internet_->close(session));

  session = 0;
  for (int i = 0; i < 10 && session == 0; ++i) session = connect(0);  // it serves one at a time
  ASSERT_NE(session, 0U);
  EXPECT_EQ(errorOf([&] { return put(session, "z", "z"); }), Internet::kErrorTimeout);
  EXPECT_FALSE(internet_->deleteFile(session, "x")) << "no late reply may answer this";
  EXPECT_TRUE(internet_->close(session));
  EXPECT_TRUE(server_.tree().isFile("/x"));
}

TEST_F(InternetTimeLimits, ClosingDoesNotWaitForASilentServer) {
  server_.on("QUIT", 1, FtpFault::stall());
  const Handle session = connect();
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_TRUE(internet_->close(session));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, milliseconds{4000});
}

}  // namespace
}  // namespace karvel
