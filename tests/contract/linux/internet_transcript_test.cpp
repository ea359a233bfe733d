#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "contract/internet_fixture.h"

// The commands on the wire, word for word. Another library may greet the server or probe a folder
// with other commands and keep the same contract.

namespace karvel {
namespace {

class InternetTranscript : public InternetTest {
 protected:
  /// The commands since the last call.
  Names sent() {
    Names lines = server_.transcript();
    server_.clearTranscript();
    return lines;
  }
};

TEST_F(InternetTranscript, EachCallSendsItsCommandsAndNothingElse) {
  server_.tree().addFile("/old.csv", "old");
  const Handle session = connect();
  ASSERT_NE(session, 0U);
  EXPECT_EQ(sent(), (Names{"USER shop", "PASS secret"}));

  EXPECT_EQ(internet_->currentDirectory(session), "/");
  EXPECT_EQ(sent(), (Names{"PWD"}));
  EXPECT_EQ(list(session), (Names{"old.csv"}));
  EXPECT_EQ(sent(), (Names{"TYPE A", "PASV", "LIST"}));
  EXPECT_TRUE(put(session, "a\n", "new.xxx", Internet::kTransferAscii));
  EXPECT_EQ(sent(), (Names{"PASV", "STOR new.xxx"}));
  EXPECT_TRUE(put(session, "b", "new.bin"));
  EXPECT_EQ(sent(), (Names{"TYPE I", "PASV", "STOR new.bin"}));
  EXPECT_TRUE(internet_->deleteFile(session, "old.csv"));
  EXPECT_EQ(sent(), (Names{"DELE old.csv"}));
  EXPECT_TRUE(internet_->renameFile(session, "new.xxx", "old.csv"));
  EXPECT_EQ(sent(), (Names{"RNFR new.xxx", "RNTO old.csv"}));
  server_.tree().addFolder("/sub");
  EXPECT_TRUE(internet_->setCurrentDirectory(session, "sub"));
  EXPECT_EQ(sent(), (Names{"CWD sub"}));
  EXPECT_EQ(list(session), Names{});
  EXPECT_EQ(sent(), (Names{"TYPE A", "PASV", "LIST"}));
  EXPECT_TRUE(internet_->close(session));
  EXPECT_EQ(sent(), (Names{"QUIT"}));
  EXPECT_EQ(server_.connections(), 1);
}

TEST_F(InternetTranscript, RefusalsAreFollowedByNothing) {
  const Handle session = connect();
  sent();
  server_.on("STOR", 1, FtpFault::refuse("553 No."));
  EXPECT_FALSE(put(session, "a", "a.txt"));
  EXPECT_EQ(sent(), (Names{"TYPE I", "PASV", "STOR a.txt"}));
  EXPECT_FALSE(internet_->setCurrentDirectory(session, "missing"));
  EXPECT_EQ(sent(), (Names{"CWD missing"}));
  EXPECT_TRUE(put(session, "a", "a.txt"));
  EXPECT_EQ(sent(), (Names{"PASV", "STOR a.txt"}));
}

TEST_F(InternetTranscript, APatternIsTheArgumentOfTheListing) {
  const Handle session = connect();
  sent();
  Internet::FindData entry;
  EXPECT_EQ(internet_->findFirst(session, "a b*.txt", entry), 0U);
  EXPECT_EQ(sent(), (Names{"TYPE A", "PASV", "LIST a b*.txt"}));
}

// A file of this platform may have either line end; its partner sends files as they are.
TEST_F(InternetTranscript, EveryLineEndOfATextIsCrLfOnTheWire) {
  const std::pair<std::string, std::string> cases[] = {
      {"a\nb\n", "a\r\nb\r\n"},
      {"a\r\nb\n", "a\r\nb\r\n"},
      {"\n\n", "\r\n\r\n"},
      {"a\rb", "a\rb"},
      {"a\r", "a\r"},
      {"\r\r\n", "\r\r\n"},
      {std::string(16 * 1024 - 1, 'x') + "\r\ny", std::string(16 * 1024 - 1, 'x') + "\r\ny"},
      {std::string(16 * 1024, 'x') + "\ny", std::string(16 * 1024, 'x') + "\r\ny"},
      {"", ""},
  };
  const Handle session = connect();
  for (const auto& [local, wire] : cases) {
    EXPECT_TRUE(put(session, local, "t.csv", Internet::kTransferAscii));
    EXPECT_EQ(server_.tree().content("/t.csv"), wire);
  }
}

}  // namespace
}  // namespace karvel
