#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "contract/internet_fixture.h"
#include "text/date_time.h"

namespace karvel {
namespace {

// 表 in code page 932: its second byte is the backslash.
constexpr const char* kNameWithBackslash = "\x95\x5C";

TEST_F(InternetTest, WalksThroughFolders) {
  const std::string japanese = std::string("/a/b c/") + kNameWithBackslash;
  server_.add(japanese + "/d\"q\"");
  const Handle session = connect();
  const std::pair<std::string, std::string> steps[] = {
      {"a", "/a"},
      {"b c", "/a/b c"},
      {kNameWithBackslash, japanese},
      {"d\"q\"", japanese + "/d\"q\""},
      {"..", japanese},
      {"/a", "/a"},
      {std::string("b c/") + kNameWithBackslash, japanese},
  };
  for (const auto& [change, current] : steps) {
    EXPECT_TRUE(internet_->setCurrentDirectory(session, change)) << change;
    const std::string told = internet_->currentDirectory(session).value_or("");
    EXPECT_EQ(told, expected(current, told, Difference::kFolderNameEndsAtAQuote, japanese + "/d"));
  }
}

TEST_F(InternetTest, StoresUnderTheNameByteForByte) {
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
  EXPECT_TRUE(put(session, "", "あ.txt"));
  EXPECT_TRUE(server_.files().contains("あ.txt") ||
              isKnown(Difference::kNamesPassThroughCodePage932));
}

TEST_F(InternetTest, TransfersKeepWhatTheyMust) {
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

TEST_F(InternetTest, ListsTheFolderAsItIs) {
  server_.add("/in/b.txt", std::string(1234, 'x'));
  server_.add("/in/a b.txt", "");
  server_.add(std::string("/in/") + kNameWithBackslash);
  server_.add("/other.txt", "");
  const Handle session = connect();
  ASSERT_TRUE(internet_->setCurrentDirectory(session, "in"));

  const auto found = [this](bool succeeded) {
    if (!succeeded) return std::to_string(internet_->lastError());
    return entry_.name + (entry_.folder ? "/" : " " + std::to_string(entry_.size));
  };
  const Handle find = internet_->findFirst(session, "*.*", entry_);
  const std::string first = found(find != 0);
  EXPECT_EQ(first, expected("a b.txt 0", first, Difference::kListedNameEndsAtABlank, "a 0"));
  EXPECT_EQ(formatDate(entry_.time), "2024/01/01");
  EXPECT_EQ(found(internet_->findNext(find, entry_)), "b.txt 1234");
  EXPECT_EQ(found(internet_->findNext(find, entry_)), kNameWithBackslash + std::string("/"));
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(errorOf(internet_->findNext(find, entry_)), Internet::kErrorNoMoreFiles);
  }
}

class InternetIpv6 : public InternetTest {
 protected:
  InternetIpv6() : InternetTest(TestSocket::kIpv6) {}
};

TEST_F(InternetIpv6, TransfersInBothModes) {
  for (const std::uint32_t flags : {Internet::kFlagPassive, 0U}) {
    const Handle session = connect(flags);
    const ErrorNumber error = errorOf(session != 0);
    if (error == Internet::kErrorNameNotResolved && isKnown(Difference::kNoIpv6)) continue;
    ASSERT_EQ(error, 0U);
    EXPECT_TRUE(put(session, "x", "x"));
    EXPECT_EQ(list(session), (Names{"x"}));
    EXPECT_TRUE(internet_->close(session));
  }
}

class InternetErrors : public InternetTest {
 protected:
  using Account = Internet::Account;

  /// The number that a login ends with which differs from a good one so.
  template <typename Value>
  ErrorNumber loginError(Value Account::*part, const Value& value) {
    Account account = this->account();
    account.*part = value;
    return errorOf(internet_->connect(root_, account, Internet::kFlagPassive) != 0);
  }
};

TEST_F(InternetErrors, HostsThatDoNotResolve) {
  EXPECT_EQ(loginError(&Account::host, {}), Internet::kErrorNameNotResolved);
  for (const char* host : {"", " ", "no such host", "no-such-host.invalid", "user@127.0.0.1",
                           "127.0.0.1/folder", "127.0.0.1:21", "127.0.0.1#", "[::1]",
                           "%31%32%37.0.0.1", "a..b", "-", "\x93\x8C\x8B\x9E"}) {
    EXPECT_EQ(loginError(&Account::host, {host}), Internet::kErrorNameNotResolved) << host;
  }
  EXPECT_EQ(server_.takeTranscript(), Names{});
}

TEST_F(InternetErrors, PortsAndAccountsThatAreWrong) {
  const int closed = TestSocket::listen(TestSocket::kIpv4).port();
  EXPECT_EQ(loginError(&Account::port, closed), Internet::kErrorCannotConnect);
  for (const int port : {-1, 65536, 2147483647}) {
    EXPECT_EQ(loginError(&Account::port, port), Internet::kErrorInvalidParameter) << port;
  }
  EXPECT_EQ(loginError(&Account::password, {"wrong"}), Internet::kErrorLoginFailure);
  EXPECT_EQ(loginError(&Account::password, {}), Internet::kErrorLoginFailure);
  server_.on("USER", ScriptedFtpServer::kEvery, {FtpFault::kRefuse, "530 Not you."});
  EXPECT_EQ(loginError(&Account::port, server_.port()), Internet::kErrorLoginFailure);
}

TEST_F(InternetErrors, ARefusalComesWithAllItsTextByteForByte) {
  const Handle session = connect();
  int count = 0;
  for (const std::string text : {"", "表は空", "\x95\x5C\x82\xCD\x8B\xF3"}) {
    const std::string last = "550 " + std::string(500, 'x') + text;
    const std::string reply = "550-Many lines\r\n" + last;
    server_.on("DELE", ++count, {FtpFault::kRefuse, reply});
    EXPECT_EQ(errorOf(internet_->deleteFile(session, "x")), Internet::kErrorExtended);
    EXPECT_EQ(internet_->lastResponse().number, Internet::kErrorExtended);
    const std::string told = internet_->lastResponse().text;
    EXPECT_EQ(told, expected(reply, told, Difference::kReplyIsItsLastLine, last));
  }
  EXPECT_TRUE(internet_->currentDirectory(session).has_value()) << "the session goes on";
}

TEST_F(InternetErrors, LocalFilesThatCannotBeRead) {
  const Handle session = connect();
  server_.takeTranscript();
  const auto putError = [&](const std::string& path) {
    return errorOf(internet_->putFile(session, path, "x", Internet::kTransferBinary));
  };
  EXPECT_EQ(putError(folder_.path("missing")), Internet::kErrorFileNotFound);
  for (const std::string& path : {folder_.path(""), std::string()}) {
    EXPECT_NE(putError(path), 0U) << path;
    EXPECT_LT(putError(path), Internet::kErrorInvalidParameter) << "no number of the file system";
  }
  EXPECT_EQ(server_.takeTranscript(), Names{});
}

TEST_F(InternetErrors, WhatMustNotReachTheWire) {
  const Handle session = connect();
  const std::string file = folder_.add("upload.bin", "x");
  server_.takeTranscript();
  EXPECT_EQ(loginError(&Account::user, {}), Internet::kErrorInvalidParameter)
      << "a password without a user";
  const std::string texts[] = {"x\r\nDELE y", "x\ny", "x\ry", std::string("x\0y", 3)};
  for (const std::string& bad : texts) {
    const ErrorNumber errors[] = {
        loginError(&Account::host, {bad}),
        loginError(&Account::user, {bad}),
        loginError(&Account::password, {bad}),
        errorOf(internet_->setCurrentDirectory(session, bad)),
        errorOf(internet_->putFile(session, file, bad, Internet::kTransferAscii)),
        errorOf(internet_->renameFile(session, bad, "y")),
        errorOf(internet_->renameFile(session, "y", bad)),
        errorOf(internet_->deleteFile(session, bad)),
        errorOf(internet_->findFirst(session, bad, entry_) != 0),
    };
    for (const ErrorNumber error : errors) EXPECT_EQ(error, Internet::kErrorInvalidParameter);
  }
  EXPECT_EQ(server_.takeTranscript(), Names{});
}

TEST_F(InternetErrors, HandlesThatAreNoneOrHaveBeenClosed) {
  server_.add("/a", "");
  const Handle session = connect();
  const Handle find = internet_->findFirst(session, "*.*", entry_);
  EXPECT_TRUE(internet_->close(session));
  for (const Handle handle : {Handle{0}, session, find, session + 1000}) {
    const ErrorNumber errors[] = {
        errorOf(internet_->close(handle)),
        errorOf(internet_->deleteFile(handle, "x")),
        errorOf(internet_->findNext(handle, entry_)),
        errorOf(internet_->connect(handle, account(), 0) != 0),
    };
    for (const ErrorNumber error : errors) EXPECT_EQ(error, Internet::kErrorInvalidHandle);
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
