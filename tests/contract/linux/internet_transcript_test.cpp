#include <gtest/gtest.h>

#include "contract/internet_fixture.h"

// The commands on the wire, word for word. These tests hold for libcurl only: another library may
// greet the server or probe a folder with other commands and keep the same contract.

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
  EXPECT_EQ(sent(), (Names{"USER shop", "PASS secret", "PWD"}));

  EXPECT_EQ(internet_->currentDirectory(session), "/");
  EXPECT_EQ(sent(), (Names{"PWD"}));
  EXPECT_EQ(list(session), (Names{"old.csv"}));
  EXPECT_EQ(sent(), (Names{"PASV", "TYPE A", "LIST"}));
  EXPECT_TRUE(put(session, "a\n", "new.xxx", Internet::kTransferAscii));
  EXPECT_EQ(sent(), (Names{"PASV", "STOR new.xxx"}));
  EXPECT_TRUE(put(session, "b", "new.bin"));
  EXPECT_EQ(sent(), (Names{"PASV", "TYPE I", "STOR new.bin"}));
  EXPECT_TRUE(internet_->deleteFile(session, "old.csv"));
  EXPECT_EQ(sent(), (Names{"DELE old.csv"}));
  EXPECT_TRUE(internet_->renameFile(session, "new.xxx", "old.csv"));
  EXPECT_EQ(sent(), (Names{"RNFR new.xxx", "RNTO old.csv"}));
  EXPECT_TRUE(internet_->createDirectory(session, "sub"));
  EXPECT_EQ(sent(), (Names{"MKD sub"}));
  EXPECT_TRUE(internet_->setCurrentDirectory(session, "sub"));
  EXPECT_EQ(sent(), (Names{"CWD sub"}));
  EXPECT_EQ(list(session), Names{});
  EXPECT_EQ(sent(), (Names{"PASV", "TYPE A", "LIST"}));
  EXPECT_TRUE(internet_->close(session));
  EXPECT_EQ(sent(), (Names{"QUIT"}));
  EXPECT_EQ(server_.connections(), 1);
}

}  // namespace
}  // namespace karvel
