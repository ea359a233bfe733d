#include "ftp/mc_win_ftp.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "fakes/fake_internet.h"
#include "text/code_page.h"

namespace karvel {
namespace {

using Failure = FakeInternet::Failure;
using Failures = std::vector<std::pair<std::int32_t, std::string>>;

class McWinFtpTest : public ::testing::Test {
 protected:
  FakeFiles files;
  FakeInternet internet{files};
  Failures failures;
  std::unique_ptr<McWinFTP> ftp = make();

  std::unique_ptr<McWinFTP> make() {
    return std::make_unique<McWinFTP>(internet,
                                      [this](std::int32_t number, const std::string& text) {
                                        failures.emplace_back(number, text);
                                      });
  }
  void open() {
    ftp->OpenSession();
    internet.calls.clear();
  }
  void failEverything(const Failure& failure) {
    internet.fault = [failure](const std::string&) { return failure; };
  }
};

TEST_F(McWinFtpTest, NamesEveryFailureInJapanese) {
  const std::string noText = "エラーが発生しています。";
  const struct {
    Failure failure;
    std::int32_t number;
    std::string text;
  } cases[] = {
      {{12002}, 12002, "要求がタイムアウトになりました。"},
      {{Internet::kErrorNameNotResolved}, 12007, "サーバー名を解決できませんでした。"},
      {{12031}, 12031, "サーバー接続がリセットされました。"},
      {{12003, toCodePage932("550 表示できません"), 12111}, 12111, "550 表示できません"},
      {{12003, "", 12111}, 12111, noText},
      {{5}, 5, "アクセスが拒否されました。"},
      {{77}, 77, noText},
      {{12003, "550-本部\r\n\x1B[2J\a\x7F"}, 12003, "550-本部   [2J  "},
      {{12003, std::string("550 a\0b", 7)}, 12003, "550 a"},
  };
  open();
  for (const auto& c : cases) {
    failEverything(c.failure);
    failures.clear();
    EXPECT_EQ(ftp->DeleteFile("a"), 0);
    EXPECT_EQ(failures, (Failures{{c.number, c.text}}));
  }
  internet.fault = nullptr;
  failures.clear();
  EXPECT_EQ(ftp->PutFile("missing", "a"), 0);
  EXPECT_EQ(failures, (Failures{{2, noText}}));
  EXPECT_EQ(internet.transferType, 2U) << "binary unless told otherwise";

  failEverything({0});
  failures.clear();
  ftp->FindFile("*.*");
  EXPECT_EQ(failures, (Failures{{0, noText}})) << "the system's text of 0 is a success";
}

TEST_F(McWinFtpTest, AnnouncesEveryFailureOnce) {
  open();
  failEverything({12002});
  const std::function<void()> operations[] = {
      [&] { ftp->CurDir("a"); },
      [&] { EXPECT_EQ(ftp->CurDir(), ""); },
      [&] { EXPECT_EQ(ftp->PutFile("a", "b"), 0); },
      [&] { EXPECT_EQ(ftp->RenameFile("a", "b"), 0); },
      [&] { ftp->FindFile("*.*"); },
      [&] { ftp->CloseSession(); },
      [&] { ftp->OpenSession(); },
      [&] { ftp.reset(); },  // its session is gone, its library closes in vain
      [&] {
        ftp = make();
        ftp->OpenSession();  // of a library that has not opened, which has been told
      },
  };
  std::size_t expected = 0;
  for (const auto& operation : operations) {
    operation();
    EXPECT_EQ(failures.size(), ++expected);
  }
}

TEST_F(McWinFtpTest, ConnectsWithTheAccountAsItWasSet) {
  EXPECT_EQ(internet.options, (std::map<std::uint32_t, std::uint32_t>{{2, 10000}, {6, 10000}}));
  ftp->OpenSession();
  EXPECT_EQ(internet.connectFlags, 0U);
  EXPECT_EQ(internet.account.port, 21);
  for (const auto& part :
       {internet.account.host, internet.account.user, internet.account.password}) {
    EXPECT_FALSE(part.has_value()) << "an empty text is absent";
  }

  ftp->User("利用者");
  ftp->Inet_FtpPort(2121);
  ftp->PassiveFlag(true);
  ftp->OpenSession();
  EXPECT_EQ(internet.account.user, toCodePage932("利用者"));
  EXPECT_EQ(ftp->Inet_FtpPort(), 2121);
  EXPECT_TRUE(ftp->PassiveFlag());
}

TEST_F(McWinFtpTest, TakesOneLeadingSeparatorOffAFolder) {
  open();
  const std::pair<std::string, std::string> cases[] = {
      {"/a/b", "a/b"}, {"\\a", "a"}, {"//a", "/a"}, {"", ""}, {"表/ソ", "表/ソ"}};
  for (const auto& [written, sent] : cases) {
    ftp->CurDir(written);
    EXPECT_EQ(internet.calls.back(), "cd " + toCodePage932(sent)) << written;
  }
}

TEST_F(McWinFtpTest, EnumeratesUntilTheEndWithoutAFailure) {
  open();
  ftp->FindFile("*.*");
  EXPECT_TRUE(ftp->RemoteFile->SearchEnd) << "an empty folder";

  internet.folders["/"] = {{"a", ""}, {"b", ""}};
  std::string names;
  for (ftp->FindFile("*.*"); !ftp->RemoteFile->SearchEnd; ftp->NextFile()) {
    names += ftp->RemoteFile->FileName;
  }
  EXPECT_EQ(names, "ab");
  internet.calls.clear();
  ftp->NextFile();
  EXPECT_TRUE(internet.calls.empty()) << "after the end the server is not asked again";
  ftp->FindFile("*.*");
  EXPECT_EQ(internet.calls, (std::vector<std::string>{"close", "list"}));
  EXPECT_TRUE(failures.empty());

  failEverything({12031});
  for (int i = 0; i < 2; ++i) ftp->NextFile();
  EXPECT_TRUE(ftp->RemoteFile->SearchEnd) << "a failure is an end, too";
  EXPECT_EQ(failures.size(), 1U);
}

TEST_F(McWinFtpTest, GivesTheServerItsNamesBack) {
  const auto fromSjis = [](const char* bytes) { return fromCodePage932(bytes); };
  const struct {
    std::string bytes;  // as the server lists it
    std::string name;   // as it is shown
    bool utf8;          // what the server gets
  } cases[] = {
      {"a", "a", false},
      {toCodePage932("本部"), "本部", false},
      {"本部", "本部", true},
      {"表😀.txt", "表😀.txt", true},
      {"\u30BB\u3099\u30CF\u309A\u30A6\u3099\u30EF\u3099\u304B\u3099", "ゼパヴヷが", true},
      {"\u3099か\u309Aa\u3099ア\u3099", "\u3099か\u309Aa\u3099ア\u3099", true},
      {"\xEF\xBD\xB1", "ｱ", true},
      // UTF-8 by chance: half-width katakana, kanji whose second byte is ASCII, rare kanji.
      {"\xDF\xA1", "ﾟ｡", false},
      {"\xC3\x81\x40\xC3\x9F\x5C", fromSjis("\xC3\x81\x40\xC3\x9F\x5C"), false},
      {"\xE0\xA4\xB1\xEA\xA4\xB1", fromSjis("\xE0\xA4\xB1\xEA\xA4\xB1"), false},
      // Neither of the two.
      {"\xCB\xDC\xC9\xF4", fromSjis("\xCB\xDC\xC9\xF4"), false},
      {"\xC2\x80", "\u0080", true},
  };
  for (const auto& c : cases) {
    ftp = make();
    open();
    internet.folders["/"] = {{c.bytes, ""}};
    ftp->FindFile("*.*");
    EXPECT_EQ(ftp->RemoteFile->FileName, c.name);
    ftp->RenameFile(c.name, "新");
    EXPECT_EQ(internet.calls.back(),
              "rename " + c.bytes + " " + (c.utf8 ? "新" : toCodePage932("新")));
    ftp->DeleteFile(c.name);
    EXPECT_EQ(internet.calls.back(), "delete " + c.bytes);
    ftp->PutFile("a", c.name);
    EXPECT_EQ(internet.calls.back(), "put " + c.bytes);
    ftp->CurDir(c.name);
    EXPECT_EQ(internet.calls.back(), "cd " + c.bytes);
  }
}

TEST_F(McWinFtpTest, KnowsTheServersEncodingFromFolderToFolder) {
  open();
  internet.folders = {{"/", {{"\u30BB\u3099", ""}}}, {"/本部", {}}};
  ftp->FindFile("*.*");
  EXPECT_EQ(ftp->RemoteFile->FileType, 16);
  ftp->NextFile();
  EXPECT_EQ(ftp->RemoteFile->FileName, "ゼ");
  ftp->CurDir("本部");
  EXPECT_EQ(ftp->CurDir(), "/本部");
  ftp->FindFile("*.*");
  EXPECT_TRUE(ftp->RemoteFile->SearchEnd);
  ftp->DeleteFile("ゼ");
  EXPECT_EQ(internet.calls.back(), "delete ゼ") << "not as the other folder writes it";
}

TEST_F(McWinFtpTest, KeepsAHandleThatWouldNotClose) {
  internet.folders["/"] = {{"a", ""}};
  open();
  ftp->FindFile("*.*");
  failEverything({6});
  ftp->CloseSession();
  EXPECT_NE(ftp->hFTP(), 0U);
  EXPECT_EQ(failures.size(), 2U) << "enumeration and session";

  internet.fault = nullptr;
  ftp->CloseSession();
  EXPECT_EQ(ftp->hFTP(), 0U);
  EXPECT_EQ(internet.openHandles, 1);

  open();
  ftp->FindFile("*.*");
  ftp.reset();
  EXPECT_EQ(internet.openHandles, 0) << "releasing it closes all three";
}

}  // namespace
}  // namespace karvel
