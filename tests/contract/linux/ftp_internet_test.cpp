#include "platform/linux/internet/ftp_internet.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>
#include <tuple>
#include <utility>

#include "contract/internet_fixture.h"

// What this platform's own FTP client promises beyond the port: the commands word for word, what a
// session makes of its failures, and its limits.

namespace karvel {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr std::uint32_t kLimit = 300;  ///< milliseconds

class FtpInternetTest : public InternetTest {
 protected:
  void useLookup(AddressLookup lookup) {
    internet_ = std::make_unique<FtpInternet>(std::move(lookup));
    root_ = internet_->open();
  }
  void setTimeLimits(std::uint32_t limit) {
    internet_->setOption(root_, Internet::kOptionConnectTimeout, limit);
    internet_->setOption(root_, Internet::kOptionReceiveTimeout, limit);
  }
  ErrorNumber listError(Handle session) {
    return errorOf(internet_->findFirst(session, "*.*", entry_) != 0);
  }
  ErrorNumber putError(Handle session, const std::string& content) {
    return errorOf(put(session, content, "x"));
  }
};

TEST_F(FtpInternetTest, EachCallSendsItsCommandsAndNothingElse) {
  server_.add("/old.csv", "old");
  const Handle session = connect();
  EXPECT_EQ(server_.takeTranscript(),
            (Names{ScriptedFtpServer::kGreeting, "USER shop", "PASS secret"}));
  EXPECT_EQ(internet_->currentDirectory(session), "/");
  EXPECT_EQ(server_.takeTranscript(), (Names{"PWD"}));
  EXPECT_EQ(list(session), (Names{"old.csv"}));
  EXPECT_EQ(server_.takeTranscript(), (Names{"TYPE A", "PASV", "LIST"}));
  EXPECT_TRUE(put(session, "a\n", "new.xxx", Internet::kTransferAscii));
  EXPECT_EQ(server_.takeTranscript(), (Names{"PASV", "STOR new.xxx"}));
  EXPECT_TRUE(put(session, "b", "new.bin"));
  EXPECT_EQ(server_.takeTranscript(), (Names{"TYPE I", "PASV", "STOR new.bin"}));
  EXPECT_TRUE(internet_->deleteFile(session, "old.csv"));
  EXPECT_EQ(server_.takeTranscript(), (Names{"DELE old.csv"}));
  EXPECT_TRUE(internet_->renameFile(session, "new.xxx", "old.csv"));
  EXPECT_EQ(server_.takeTranscript(), (Names{"RNFR new.xxx", "RNTO old.csv"}));
  EXPECT_FALSE(internet_->setCurrentDirectory(session, "missing"));
  EXPECT_EQ(server_.takeTranscript(), (Names{"CWD missing"}));
  EXPECT_NE(internet_->findFirst(session, "a b*.txt", entry_), 0U);
  EXPECT_EQ(server_.takeTranscript(), (Names{"TYPE A", "PASV", "LIST a b*.txt"}));
  EXPECT_TRUE(internet_->close(root_));
  EXPECT_EQ(server_.takeTranscript(), (Names{"QUIT"}));
}

// A file of this platform may have either line end; its partner sends files as they are.
TEST_F(FtpInternetTest, EveryLineEndOfATextIsCrLfOnTheWire) {
  const std::string piece(16 * 1024 - 1, 'x');
  const std::pair<std::string, std::string> cases[] = {
      {"\n\na\nb", "\r\n\r\na\r\nb"},     {"a\r\nb\rc\r", "a\r\nb\rc\r"},     {"\r\r\n", "\r\r\n"},
      {piece + "\r\ny", piece + "\r\ny"}, {piece + "x\ny", piece + "x\r\ny"},
  };
  const Handle session = connect();
  for (const auto& [local, wire] : cases) {
    EXPECT_TRUE(put(session, local, "t.csv", Internet::kTransferAscii));
    EXPECT_EQ(server_.files(), (Files{{"t.csv", wire}}));
  }
}

TEST_F(FtpInternetTest, ASessionGoesOnAfterAFailedTransfer) {
  const std::tuple<std::string, FtpFault, ErrorNumber> cases[] = {
      {"PASV", {FtpFault::kRefusedPort}, Internet::kErrorCannotConnect},
      {"PASV", {FtpFault::kReplaceReply, "227 Entering."}, Internet::kErrorExtended},
      {"STOR", {FtpFault::kRefuse, "150 Opening.\r\n425 Cannot."}, Internet::kErrorExtended},
      {"STOR", {FtpFault::kRefuse, "226 That was all."}, Internet::kErrorExtended},
      {"STOR", {FtpFault::kCutTransfer, "", {}, 1000}, Internet::kErrorExtended},
  };
  for (const auto& [command, fault, error] : cases) {
    SCOPED_TRACE(command + fault.text);
    for (const std::uint32_t mode : {Internet::kFlagPassive, 0U}) {
      if (mode == 0 && command == "PASV") continue;
      server_.behave();
      server_.on(command, 1, fault);
      const Handle session = connect(mode);
      EXPECT_EQ(putError(session, std::string(1'000'000, 'x')), error);
      EXPECT_EQ(putError(session, "x"), 0U);
      EXPECT_EQ(server_.files(), (Files{{"x", "x"}}));
      EXPECT_TRUE(internet_->close(session));
    }
  }
}

TEST_F(FtpInternetTest, ASilentFirstAddressLeavesTimeForTheSecond) {
  const TestSocket silent = TestSocket::listenSilently(TestSocket::kOther, server_.port());
  ASSERT_TRUE(silent.valid());
  std::string askedFor;
  useLookup([&](const std::string& host, std::uint16_t port) {
    askedFor = host;
    SocketAddresses addresses = addressesOf(TestSocket::kOther, port);
    addresses.push_back(addressesOf(TestSocket::kIpv4, port).front());
    return addresses;
  });
  setTimeLimits(2 * kLimit);
  Internet::Account account = this->account();
  account.host = "two-addresses.example";
  EXPECT_EQ(errorOf(internet_->connect(root_, account, 0) != 0), 0U);
  EXPECT_EQ(askedFor, account.host);
}

TEST_F(FtpInternetTest, ASlowNameServiceIsGivenUp) {
  useLookup([](const std::string&, std::uint16_t) {
    std::this_thread::sleep_for(milliseconds{5 * kLimit});
    return SocketAddresses();
  });
  setTimeLimits(kLimit);
  const auto begin = Clock::now();
  EXPECT_EQ(errorOf(connect() != 0), Internet::kErrorNameNotResolved);
  EXPECT_LT(Clock::now() - begin, milliseconds{4 * kLimit});
}

TEST_F(FtpInternetTest, ASlowServerIsNoSilentOne) {
  setTimeLimits(kLimit);
  for (const char* command : {"USER", "PASS", "PASV", "TYPE", "STOR"}) {
    server_.on(command, 1, {FtpFault::kDelay, "", milliseconds{kLimit / 2}});
  }
  EXPECT_EQ(putError(connect(), "x"), 0U);
}

TEST_F(FtpInternetTest, AnActiveConnectionMayComeLateButNotTooLate) {
  setTimeLimits(kLimit);
  server_.add("/x", "x");
  for (const char* command : {"LIST", "STOR"}) {
    server_.on(command, 1, {FtpFault::kLateConnection, "", milliseconds{kLimit / 3}});
  }
  server_.on("LIST", 2, {FtpFault::kLateConnection, "", milliseconds{5 * kLimit}});
  const Handle session = connect(0);
  EXPECT_EQ(list(session), (Names{"x"}));
  EXPECT_EQ(putError(session, "y"), 0U);
  EXPECT_EQ(listError(session), Internet::kErrorTimeout);
}

TEST_F(FtpInternetTest, AServerThatStopsReadingIsGivenUp) {
  setTimeLimits(kLimit);
  server_.on("STOR", 1, {FtpFault::kStallTransfer, "", {}, 1000});
  EXPECT_EQ(putError(connect(), std::string(20'000'000, 'x')), Internet::kErrorTimeout);
}

TEST_F(FtpInternetTest, AListingIsMoreThanCanBeKeptOrInNoKnownFormat) {
  const FtpFault listings[] = {{FtpFault::kEndlessListing, std::string(8192, 'x')},
                               {FtpFault::kListing, "total 0\r\n"},
                               {FtpFault::kListing, "A.TXT;1  12-JAN-2001\r\n"}};
  for (int i = 0; i < 3; ++i) server_.on("LIST", i + 1, listings[i]);
  const Handle session = connect();
  EXPECT_EQ(listError(session), Internet::kErrorInternal);
  EXPECT_EQ(listError(session), Internet::kErrorNoMoreFiles);
  EXPECT_EQ(listError(session), Internet::kErrorExtended);
  EXPECT_EQ(internet_->lastResponse().text, "サーバーのファイル一覧の形式を読み取れませんでした。");
}

TEST_F(FtpInternetTest, ClosingDoesNotWaitForASilentServer) {
  server_.on("QUIT", 1, {FtpFault::kStall});
  const Handle session = connect();
  const auto begin = Clock::now();
  EXPECT_TRUE(internet_->close(session));
  EXPECT_LT(Clock::now() - begin, milliseconds{4000});
}

}  // namespace
}  // namespace karvel
