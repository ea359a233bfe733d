#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>

#include "contract/internet_fixture.h"
#include "contract/known_differences.h"

namespace karvel {
namespace {

const std::string kTextsWithLineBreaks[] = {"x\r\nDELE y", "x\ny", "x\ry", std::string("x\0y", 3)};

class InternetErrors : public InternetTest {
 protected:
  /// The number that a login ends with.
  Internet::ErrorNumber loginError(const Internet::Account& account) {
    EXPECT_EQ(internet_->connect(root_, account, Internet::kFlagPassive), 0U);
    return internet_->lastError();
  }
};

TEST_F(InternetErrors, HostsThatDoNotResolve) {
  Internet::Account account = this->account();
  const std::optional<std::string> hosts[] = {std::nullopt,
                                              "",
                                              " ",
                                              "no such host",
                                              "no-such-host.invalid",
                                              "user@127.0.0.1",
                                              "127.0.0.1/folder",
                                              "127.0.0.1:21",
                                              "127.0.0.1#",
                                              "[::1]",
                                              "%31%32%37.0.0.1",
                                              "a..b",
                                              "-",
                                              "\x93\x8C\x8B\x9E"};
  for (const auto& host : hosts) {
    account.host = host;
    EXPECT_EQ(loginError(account), Internet::kErrorNameNotResolved) << host.value_or("(none)");
  }
  EXPECT_EQ(server_.connections(), 0);
}

TEST_F(InternetErrors, PortsThatNobodyListensOn) {
  Internet::Account account = this->account();
  account.port = TestSocket::listen(TestSocket::Host::kIpv4).port();  // closed again
  EXPECT_EQ(loginError(account), Internet::kErrorCannotConnect);
  for (const int port : {-1, 65536, 2147483647}) {
    account.port = port;
    EXPECT_EQ(loginError(account), Internet::kErrorInvalidParameter) << port;
  }
}

TEST_F(InternetErrors, LoginsThatTheServerRefuses) {
  Internet::Account account = this->account();
  account.password = "wrong";
  EXPECT_EQ(loginError(account), Internet::kErrorLoginFailure);
  account.password = std::nullopt;
  EXPECT_EQ(loginError(account), Internet::kErrorLoginFailure);
  server_.on("USER", ScriptedFtpServer::kEvery, FtpFault::refuse("530 Not you."));
  EXPECT_EQ(loginError(this->account()), Internet::kErrorLoginFailure);
}

TEST_F(InternetErrors, APasswordIsNotSentWithoutAUser) {
  Internet::Account account = this->account();
  account.user = std::nullopt;
  EXPECT_EQ(loginError(account), Internet::kErrorInvalidParameter);
  EXPECT_EQ(server_.connections(), 0);
}

TEST_F(InternetErrors, ARefusalComesWithAllItsText) {
  const std::string reply = "550-Many lines\r\n550 of text.";
  const Handle session = connect();
  server_.on("DELE", 1, FtpFault::refuse(reply));
  EXPECT_FALSE(internet_->deleteFile(session, "x"));
  EXPECT_EQ(internet_->lastError(), Internet::kErrorExtended);
  EXPECT_EQ(internet_->lastResponse().number, Internet::kErrorExtended);
  const bool isLastLine = differsHere(Difference::kReplyIsItsLastLine);
  EXPECT_EQ(internet_->lastResponse().text, isLastLine ? "550 of text." : reply);
  EXPECT_TRUE(internet_->currentDirectory(session).has_value()) << "the session goes on";
}

TEST_F(InternetErrors, ARefusedGreetingComesWithItsText) {
  server_.on(ScriptedFtpServer::kGreeting, 1, FtpFault::refuse("421 Too many users."));
  if (differsHere(Difference::kGreetingIsNotChecked)) {
    EXPECT_NE(connect(), 0U) << "the login after it counts";
    return;
  }
  EXPECT_EQ(loginError(account()), Internet::kErrorExtended);
  EXPECT_EQ(internet_->lastResponse().text, "421 Too many users.");
}

TEST_F(InternetErrors, ServerTextsArriveByteForByte) {
  const Handle session = connect();
  int count = 0;
  for (const std::string text : {"表は空", "\x95\x5C\x82\xCD\x8B\xF3"}) {
    const std::string reply = "550 " + std::string(500, 'x') + text;
    server_.on("DELE", ++count, FtpFault::refuse(reply));
    EXPECT_FALSE(internet_->deleteFile(session, "x"));
    EXPECT_EQ(internet_->lastResponse().text, reply);
  }
}

TEST_F(InternetErrors, LocalFilesThatCannotBeRead) {
  const Handle session = connect();
  server_.clearTranscript();
  const std::string missing = folder_.path("missing");
  EXPECT_FALSE(internet_->putFile(session, missing, "x", Internet::kTransferBinary));
  EXPECT_EQ(internet_->lastError(), Internet::kErrorFileNotFound);
  for (const std::string& path : {folder_.path(""), std::string()}) {
    EXPECT_FALSE(internet_->putFile(session, path, "x", Internet::kTransferBinary)) << path;
    EXPECT_LT(internet_->lastError(), Internet::kErrorInvalidParameter)
        << "a number of the file system for " << path;
  }
  EXPECT_EQ(server_.transcript(), Names{});
}

TEST_F(InternetErrors, LineBreaksNeverReachTheWire) {
  for (const std::string& bad : kTextsWithLineBreaks) {
    Internet::Account account = this->account();
    account.user = bad;
    EXPECT_EQ(loginError(account), Internet::kErrorInvalidParameter);
    account = this->account();
    account.password = bad;
    EXPECT_EQ(loginError(account), Internet::kErrorInvalidParameter);
    account = this->account();
    account.host = bad;
    EXPECT_EQ(loginError(account), Internet::kErrorInvalidParameter);
  }
  const Handle session = connect();
  const std::string file = localFile("x");
  server_.clearTranscript();
  Internet::FindData entry;
  for (const std::string& bad : kTextsWithLineBreaks) {
    const bool outcomes[] = {
        internet_->setCurrentDirectory(session, bad),
        internet_->putFile(session, file, bad, Internet::kTransferAscii),
        internet_->renameFile(session, bad, "y"),
        internet_->renameFile(session, "y", bad),
        internet_->deleteFile(session, bad),
        internet_->findFirst(session, bad, entry) != 0,
    };
    for (const bool outcome : outcomes) EXPECT_FALSE(outcome);
    EXPECT_EQ(internet_->lastError(), Internet::kErrorInvalidParameter);
  }
  EXPECT_EQ(server_.transcript(), Names{});
}

TEST_F(InternetErrors, HandlesThatAreNone) {
  const Handle session = connect();
  Internet::FindData entry;
  for (const Handle handle : {Handle{0}, session + 1000}) {
    EXPECT_FALSE(internet_->close(handle));
    EXPECT_EQ(internet_->lastError(), Internet::kErrorInvalidHandle);
    EXPECT_FALSE(internet_->deleteFile(handle, "x"));
    EXPECT_EQ(internet_->lastError(), Internet::kErrorInvalidHandle);
    EXPECT_FALSE(internet_->findNext(handle, entry));
    EXPECT_EQ(internet_->lastError(), Internet::kErrorInvalidHandle);
    EXPECT_EQ(internet_->connect(handle, account(), 0), 0U);
    EXPECT_EQ(internet_->lastError(), Internet::kErrorInvalidHandle);
  }
  EXPECT_TRUE(internet_->close(session));
  EXPECT_FALSE(internet_->close(session));
  EXPECT_EQ(internet_->lastError(), Internet::kErrorInvalidHandle);
}

TEST_F(InternetErrors, ClosingASessionEndsItsEnumeration) {
  server_.tree().addFile("/a", "");
  server_.tree().addFile("/b", "");
  const Handle session = connect();
  Internet::FindData entry;
  const Handle find = internet_->findFirst(session, "*.*", entry);
  EXPECT_TRUE(internet_->close(session));
  EXPECT_FALSE(internet_->findNext(find, entry));
  EXPECT_EQ(internet_->lastError(), Internet::kErrorInvalidHandle);
}

TEST_F(InternetErrors, SystemTextsAreOneShortLine) {
  for (const Internet::ErrorNumber number : {2U, 5U, 6U, 87U}) {
    const std::string text = internet_->systemMessage(number);
    EXPECT_FALSE(text.empty()) << number;
    EXPECT_EQ(text.find_first_of("\r\n"), std::string::npos) << number;
  }
  EXPECT_EQ(internet_->systemMessage(987654321), "");
}

}  // namespace
}  // namespace karvel
