#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "contract/internet_fixture.h"
#include "contract/known_differences.h"
#include "text/date_time.h"

namespace karvel {
namespace {

// 表 in code page 932: its second byte is the backslash.
constexpr const char* kNameWithBackslash = "\x95\x5C";

class InternetSession : public InternetTest {};

TEST_F(InternetSession, WalksThroughFolders) {
  const std::string quoted = differsHere(Difference::kFolderNameEndsAtAQuote) ? "d" : "d\"q\"";
  const std::string japanese = std::string("/a/b c/") + kNameWithBackslash;
  server_.addFolder(japanese + "/d\"q\"");
  const Handle session = connect();
  const struct {
    std::string change;
    std::string current;
  } steps[] = {
      {"a", "/a"},
      {"b c", "/a/b c"},
      {kNameWithBackslash, japanese},
      {"d\"q\"", japanese + "/" + quoted},
      {"..", japanese},
      {"/a", "/a"},
      {std::string("b c/") + kNameWithBackslash, japanese},
  };
  for (const auto& step : steps) {
    EXPECT_TRUE(internet_->setCurrentDirectory(session, step.change)) << step.change;
    EXPECT_EQ(internet_->currentDirectory(session), step.current);
  }
}

TEST_F(InternetSession, StoresUnderTheNameByteForByte) {
  const Handle session = connect();
  for (const std::string name : {" a  b ", "%41%", "a#b?c;type=i", "u@h:1&=+", "[x]{y}~|\xFD\xFE",
                                 kNameWithBackslash, "-*", "本部"}) {
    EXPECT_TRUE(put(session, "content of " + name, name)) << name;
    EXPECT_TRUE(internet_->renameFile(session, name, "renamed")) << name;
    EXPECT_TRUE(internet_->renameFile(session, "renamed", name)) << name;
    EXPECT_EQ(server_.files(), (Files{{name, "content of " + name}}));
    EXPECT_TRUE(internet_->deleteFile(session, name)) << name;
    EXPECT_EQ(server_.files(), Files{});
  }
}

TEST_F(InternetSession, StoresUnderANameThatIsNoCodePage932) {
  EXPECT_TRUE(put(connect(), "x", "あ.txt"));
  const bool kept = server_.files().contains("あ.txt");
  EXPECT_EQ(kept, !differsHere(Difference::kNamesPassThroughCodePage932));
}

TEST_F(InternetSession, TransfersKeepWhatTheyMust) {
  std::string bytes;
  for (int i = 0; i < 300'000; ++i) bytes.push_back(static_cast<char>(i * 7 + i / 256));
  bytes += "\r\n\n\r\r\n";
  std::string lines = "\r\nfirst\r\n\r\n";
  // Line ends at every place of the buffers on the way.
  for (std::size_t i = 0; i < 3000; ++i) lines += std::string(i % 61, 'x') + "\r\n";
  const Handle session = connect();
  EXPECT_TRUE(put(session, bytes, "bytes"));
  EXPECT_TRUE(put(session, "old", "empty"));
  EXPECT_TRUE(put(session, "", "empty"));
  EXPECT_TRUE(put(session, lines + "last", "lines", Internet::kTransferAscii));
  EXPECT_EQ(server_.files(), (Files{{"bytes", bytes}, {"empty", ""}, {"lines", lines + "last"}}));
}

TEST_F(InternetSession, ListsTheFolderAsItIs) {
  server_.addFile("/in/b.txt", std::string(1234, 'x'));
  server_.addFile("/in/a b.txt", "");
  server_.addFolder(std::string("/in/") + kNameWithBackslash);
  server_.addFile("/other.txt", "");
  const Handle session = connect();
  ASSERT_TRUE(internet_->setCurrentDirectory(session, "in"));

  Internet::FindData entry;
  const Handle find = internet_->findFirst(session, "*.*", entry);
  ASSERT_NE(find, 0U);
  EXPECT_EQ(entry.name, differsHere(Difference::kListedNameEndsAtABlank) ? "a" : "a b.txt");
  EXPECT_FALSE(entry.folder);
  EXPECT_EQ(entry.size, 0U);
  EXPECT_EQ(formatDate(entry.time), "2024/01/01");
  ASSERT_TRUE(internet_->findNext(find, entry));
  EXPECT_EQ(entry.name, "b.txt");
  EXPECT_EQ(entry.size, 1234U);
  ASSERT_TRUE(internet_->findNext(find, entry));
  EXPECT_EQ(entry.name, kNameWithBackslash);
  EXPECT_TRUE(entry.folder);
  for (int i = 0; i < 2; ++i) {
    EXPECT_FALSE(internet_->findNext(find, entry));
    EXPECT_EQ(internet_->lastError(), Internet::kErrorNoMoreFiles);
  }
}

class InternetIpv6 : public InternetTest {
 protected:
  InternetIpv6() : InternetTest(TestSocket::kIpv6) {}
};

TEST_F(InternetIpv6, TransfersInBothModes) {
  for (const std::uint32_t flags : {Internet::kFlagPassive, 0U}) {
    const Handle session = connect(flags);
    if (differsHere(Difference::kNoIpv6)) {
      EXPECT_EQ(session, 0U);
      EXPECT_EQ(internet_->lastError(), Internet::kErrorNameNotResolved);
      continue;
    }
    ASSERT_NE(session, 0U) << internet_->lastError();
    EXPECT_TRUE(put(session, "x", "x"));
    EXPECT_EQ(list(session), (Names{"x"}));
    EXPECT_TRUE(internet_->close(session));
  }
}

class InternetErrors : public InternetTest {
 protected:
  /// The number that a login ends with which differs from a good one so.
  template <typename Value>
  ErrorNumber loginError(Value Internet::Account::*part, const Value& value) {
    Internet::Account account = this->account();
    account.*part = value;
    EXPECT_EQ(internet_->connect(root_, account, Internet::kFlagPassive), 0U);
    return internet_->lastError();
  }
  using Account = Internet::Account;
};

TEST_F(InternetErrors, HostsThatDoNotResolve) {
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
    EXPECT_EQ(loginError(&Account::host, host), Internet::kErrorNameNotResolved)
        << host.value_or("(none)");
  }
  EXPECT_EQ(server_.takeTranscript(), Names{});
}

TEST_F(InternetErrors, PortsThatNobodyListensOn) {
  const int closed = TestSocket::listen(TestSocket::kIpv4).port();
  EXPECT_EQ(loginError(&Account::port, closed), Internet::kErrorCannotConnect);
  for (const int port : {-1, 65536, 2147483647}) {
    EXPECT_EQ(loginError(&Account::port, port), Internet::kErrorInvalidParameter) << port;
  }
}

TEST_F(InternetErrors, LoginsThatTheServerRefuses) {
  EXPECT_EQ(loginError(&Account::password, {"wrong"}), Internet::kErrorLoginFailure);
  EXPECT_EQ(loginError(&Account::password, {}), Internet::kErrorLoginFailure);
  server_.on("USER", ScriptedFtpServer::kEvery, {FtpFault::kRefuse, "530 Not you."});
  EXPECT_EQ(loginError(&Account::port, server_.port()), Internet::kErrorLoginFailure);
}

TEST_F(InternetErrors, ARefusalComesWithAllItsTextByteForByte) {
  const bool isLastLine = differsHere(Difference::kReplyIsItsLastLine);
  const Handle session = connect();
  int count = 0;
  for (const std::string text : {"", "表は空", "\x95\x5C\x82\xCD\x8B\xF3"}) {
    const std::string last = "550 " + std::string(500, 'x') + text;
    server_.on("DELE", ++count, {FtpFault::kRefuse, "550-Many lines\r\n" + last});
    EXPECT_FALSE(internet_->deleteFile(session, "x"));
    EXPECT_EQ(internet_->lastError(), Internet::kErrorExtended);
    EXPECT_EQ(internet_->lastResponse().number, Internet::kErrorExtended);
    EXPECT_EQ(internet_->lastResponse().text, isLastLine ? last : "550-Many lines\r\n" + last);
  }
  EXPECT_TRUE(internet_->currentDirectory(session).has_value()) << "the session goes on";
}

TEST_F(InternetErrors, LocalFilesThatCannotBeRead) {
  const Handle session = connect();
  server_.takeTranscript();
  const std::string missing = folder_.path("missing");
  EXPECT_FALSE(internet_->putFile(session, missing, "x", Internet::kTransferBinary));
  EXPECT_EQ(internet_->lastError(), Internet::kErrorFileNotFound);
  for (const std::string& path : {folder_.path(""), std::string()}) {
    EXPECT_FALSE(internet_->putFile(session, path, "x", Internet::kTransferBinary)) << path;
    EXPECT_LT(internet_->lastError(), Internet::kErrorInvalidParameter)
        << "a number of the file system for " << path;
  }
  EXPECT_EQ(server_.takeTranscript(), Names{});
}

TEST_F(InternetErrors, WhatMustNotReachTheWire) {
  EXPECT_EQ(loginError(&Account::user, {}), Internet::kErrorInvalidParameter)
      << "a password without a user";
  EXPECT_EQ(server_.takeTranscript(), Names{});

  const Handle session = connect();
  const std::string file = folder_.add("upload.bin", "x");
  server_.takeTranscript();
  Internet::FindData entry;
  const std::string texts[] = {"x\r\nDELE y", "x\ny", "x\ry", std::string("x\0y", 3)};
  for (const std::string& bad : texts) {
    for (auto part : {&Account::host, &Account::user, &Account::password}) {
      EXPECT_EQ(loginError(part, {bad}), Internet::kErrorInvalidParameter);
    }
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
  EXPECT_EQ(server_.takeTranscript(), Names{});
}

TEST_F(InternetErrors, HandlesThatAreNoneOrHaveBeenClosed) {
  server_.addFile("/a", "");
  server_.addFile("/b", "");
  const Handle session = connect();
  Internet::FindData entry;
  const Handle find = internet_->findFirst(session, "*.*", entry);
  const auto isRefused = [this](bool succeeded) {
    return !succeeded && internet_->lastError() == Internet::kErrorInvalidHandle;
  };
  EXPECT_TRUE(internet_->close(session));
  for (const Handle handle : {Handle{0}, session, find, session + 1000}) {
    EXPECT_TRUE(isRefused(internet_->close(handle))) << handle;
    EXPECT_TRUE(isRefused(internet_->deleteFile(handle, "x"))) << handle;
    EXPECT_TRUE(isRefused(internet_->findNext(handle, entry))) << handle;
    EXPECT_TRUE(isRefused(internet_->connect(handle, account(), 0) != 0)) << handle;
  }
}

TEST_F(InternetErrors, SystemTextsAreOneShortLine) {
  for (const ErrorNumber number : {2U, 5U, 6U, 87U}) {
    const std::string text = internet_->systemMessage(number);
    EXPECT_FALSE(text.empty()) << number;
    EXPECT_EQ(text.find_first_of("\r\n"), std::string::npos) << number;
  }
  EXPECT_EQ(internet_->systemMessage(987654321), "");
}

}  // namespace
}  // namespace karvel
