#include <gtest/gtest.h>

#include <algorithm>

#include "contract/internet_fixture.h"
#include "contract/known_differences.h"
#include "text/date_time.h"

namespace karvel {
namespace {

// 表 in code page 932: its second byte is the backslash.
constexpr const char* kFolderWithBackslash = "\x95\x5C";

class InternetSession : public InternetTest {};

TEST_F(InternetSession, WalksThroughFolders) {
  const std::string japanese = kFolderWithBackslash;
  const std::string quoted = differsHere(Difference::kFolderNameEndsAtAQuote) ? "d" : "d\"q\"";
  server_.tree().addFolder("/a/b c/" + japanese + "/d\"q\"");
  const Handle session = connect();
  const struct {
    std::string change;
    std::string current;
  } steps[] = {
      {"a", "/a"},
      {"b c", "/a/b c"},
      {japanese, "/a/b c/" + japanese},
      {"d\"q\"", "/a/b c/" + japanese + "/" + quoted},
      {"..", "/a/b c/" + japanese},
      {"/a", "/a"},
      {"b c/" + japanese, "/a/b c/" + japanese},
  };
  for (const auto& step : steps) {
    EXPECT_TRUE(internet_->setCurrentDirectory(session, step.change)) << step.change;
    EXPECT_EQ(internet_->currentDirectory(session), step.current);
  }
}

TEST_F(InternetSession, StoresUnderTheNameByteForByte) {
  const std::string names[] = {
      " a  b ", "%41%", "a#b?c;type=i", "u@h:1&=+", "[x]{y}~|\xFD\xFE", kFolderWithBackslash,
      "-*",     "本部",
  };
  const Handle session = connect();
  for (const std::string& name : names) {
    EXPECT_TRUE(put(session, "content of " + name, name)) << name;
    EXPECT_EQ(server_.tree().content("/" + name), "content of " + name);
    EXPECT_TRUE(internet_->renameFile(session, name, "renamed")) << name;
    EXPECT_TRUE(internet_->renameFile(session, "renamed", name)) << name;
    EXPECT_TRUE(internet_->deleteFile(session, name)) << name;
    EXPECT_FALSE(server_.tree().isFile("/" + name)) << name;
  }
}

TEST_F(InternetSession, StoresUnderANameThatIsNoCodePage932) {
  EXPECT_TRUE(put(connect(), "x", "あ.txt"));
  const bool kept = server_.tree().isFile("/あ.txt");
  EXPECT_EQ(kept, !differsHere(Difference::kNamesPassThroughCodePage932));
}

TEST_F(InternetSession, BinaryTransferKeepsEveryByte) {
  std::string content;
  for (int i = 0; i < 300'000; ++i) content.push_back(static_cast<char>(i * 7 + i / 256));
  content += "\r\n\n\r\r\n";
  const Handle session = connect();
  EXPECT_TRUE(put(session, content, "all.bin"));
  EXPECT_EQ(server_.tree().content("/all.bin"), content);
  EXPECT_TRUE(put(session, "", "all.bin"));
  EXPECT_EQ(server_.tree().content("/all.bin"), "");
}

TEST_F(InternetSession, TextTransferOfCrLfLinesKeepsThem) {
  std::string content = "\r\nfirst\r\n\r\n";
  // Line ends at every place of the buffers on the way.
  for (std::size_t i = 0; i < 3000; ++i) content += std::string(i % 61, 'x') + "\r\n";
  content += "last";
  const Handle session = connect();
  EXPECT_TRUE(put(session, content, "t.csv", Internet::kTransferAscii));
  EXPECT_EQ(server_.tree().content("/t.csv"), content);
}

TEST_F(InternetSession, ListsTheFolderAsItIs) {
  server_.tree().addFile("/in/b.txt", std::string(1234, 'x'));
  server_.tree().addFile("/in/a b.txt", "");
  server_.tree().addFolder(std::string("/in/") + kFolderWithBackslash);
  server_.tree().addFile("/other.txt", "");
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
  EXPECT_EQ(entry.name, kFolderWithBackslash);
  EXPECT_TRUE(entry.folder);
  for (int i = 0; i < 2; ++i) {
    EXPECT_FALSE(internet_->findNext(find, entry));
    EXPECT_EQ(internet_->lastError(), Internet::kErrorNoMoreFiles);
  }
}

class InternetIpv6 : public InternetTest {
 protected:
  InternetIpv6() : InternetTest({.host = TestSocket::Host::kIpv6}) {}
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

}  // namespace
}  // namespace karvel
