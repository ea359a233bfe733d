#include "ftp/safe_upload.h"

#include <gtest/gtest.h>

#include "fakes/ftp_rooms.h"
#include "text/strings.h"

namespace karvel {
namespace {

using Calls = std::vector<std::string>;

TEST(IsBinaryFileTest, LooksForTextExtensionsAnywhereInTheName) {
  for (const char* name : {"a.ini", "a.cgi", "a.php", "a.txt", "a.tmp", "a.new", "a.mas", "a.htm",
                           "a.inf", "a.csv", "A.CSV", "a.html", "a.txt.zip", "表.Inf", ".csv"}) {
    EXPECT_FALSE(IsBinaryFile(name)) << name;
  }
  for (const char* name : {"a.zip", "csv", "a.cs", "a.c.sv", "", "ａ．ｃｓｖ"}) {
    EXPECT_TRUE(IsBinaryFile(name)) << name;
  }
}

class SafeUploadTest : public ::testing::Test, protected FtpRooms {
 protected:
  SafeUploadTest() { session.clsFtp->OpenSession(); }

  bool send(const std::string& name) {
    files.files[joinPath(kFolder, name)].content = "new";
    internet.calls.clear();
    files.files.erase(kLog);
    form.MsgLabel.setCaption("");
    return upload.Ftp_PutFile(std::string(kFolder) + kSeparator, name);
  }
  /// The calls that change something on the server.
  Calls changes() {
    Calls found;
    for (const std::string& call : internet.calls) {
      if (call.find(' ') != std::string::npos) found.push_back(fromCodePage932(call));
    }
    return found;
  }
  /// The messages of the run log.
  Calls logged() {
    const std::string stamp = "2024/01/15 09:05:07\t";
    std::string text = fromCodePage932(files.files[kLog].content);
    Calls messages;
    while (text.starts_with(stamp)) {
      const auto end = text.find("\r\n");
      messages.push_back(text.substr(stamp.size(), end - stamp.size()));
      text.erase(0, end + 2);
    }
    return messages;
  }
  FakeInternet::Folder& remote() { return internet.folders["/"]; }

  const std::string kLog = joinPath(joinPath(kFolder, "Log"), "240115.log");
  const Calls kDone{"HS-FTP:RenameFile", "HS-FTP:PutFile OK"};
};

TEST_F(SafeUploadTest, SendsUnderATemporaryName) {
  const std::pair<std::string, std::string> cases[] = {
      {"a.csv", "a.xxx"}, {"表.txt", "表.xxx"}, {"集計表一覧", "集計xxx"},
      {"abcd", "axxx"},   {"abc", "xxx"},       {"ab", "xxx"},
      {"表", "xxx"},      {"x.html", "x.hxxx"}};
  for (const auto& [name, temp] : cases) {
    EXPECT_TRUE(send(name)) << name;
    EXPECT_EQ(changes(), (Calls{"put " + temp, "rename " + temp + " " + name}));
    EXPECT_EQ(internet.transferTypes[toCodePage932(temp)], IsBinaryFile(name) ? 2U : 1U) << name;
    EXPECT_EQ(status(), "FTP:PutFile OK");
    EXPECT_EQ(logged(), kDone);
  }
  EXPECT_EQ(remote().size(), std::size(cases));
}

TEST_F(SafeUploadTest, ReplacesTheOldFileAfterTheNewOneHasArrived) {
  remote() = {{"a.csv", "old"}, {"a.csv.bak", ""}};
  EXPECT_TRUE(send("a.csv"));
  EXPECT_EQ(changes(), (Calls{"put a.xxx", "delete a.csv", "rename a.xxx a.csv"}));
  EXPECT_EQ(remote(), (FakeInternet::Folder{{"a.csv", "new"}, {"a.csv.bak", ""}}));
  EXPECT_EQ(logged(), kDone);
  EXPECT_EQ(listing.findFile("F a.csv\t"), 0U) << "the listing shows the folder as it is now";
}

TEST_F(SafeUploadTest, EndsAtTheFirstStepThatFails) {
  const std::string earlier = fixedWidth("12002/要求がタイムアウトになりました。", 128);
  const std::string refused = fixedWidth("12003/550 no", 128);
  const Calls put{"put a.xxx"};
  const Calls deleted{"put a.xxx", "delete a.csv"};
  const Calls renamed{"put a.xxx", "delete a.csv", "rename a.xxx a.csv"};
  const FakeInternet::Folder old{{"a.csv", "old"}};
  const FakeInternet::Folder both{{"a.csv", "old"}, {"a.xxx", "new"}};
  const FakeInternet::Folder temporary{{"a.xxx", "new"}};
  const struct {
    std::string call;
    bool refuses;  ///< or it succeeds without an effect; then the error before stays
    std::string status;
    Calls changes;
    FakeInternet::Folder left;
  } cases[] = {
      {"put", true, "FTP:PutFile NG ", put, old},
      {"put", false, "FTP:Rename NG ", put, old},
      {"list", true, "FTP:Rename NG ", put, both},
      {"delete", true, "FTP:Rename NG ", deleted, both},
      {"delete", false, "FTP:Rename NG ", deleted, both},
      {"rename", true, "FTP:Rename NG ", renamed, temporary},
      {"rename", false, "FTP:Rename NG ", renamed, temporary},
  };
  for (const auto& c : cases) {
    remote() = old;
    form.LastFtpError = earlier;
    refuse(c.call, c.refuses ? FakeInternet::Failure{12003, "550 no"} : FakeInternet::Failure{});
    EXPECT_FALSE(send("a.csv"));
    const std::string text = c.status + (c.refuses ? refused : earlier);
    EXPECT_EQ(status(), text) << c.call;
    EXPECT_EQ(logged(), Calls{"HS-" + text}) << c.call;
    EXPECT_EQ(changes(), c.changes);
    EXPECT_EQ(remote(), c.left) << c.call;
    internet.fault = nullptr;
    EXPECT_TRUE(send("a.csv")) << "the next upload takes the same temporary name";
    EXPECT_EQ(remote(), (FakeInternet::Folder{{"a.csv", "new"}}));
  }
}

TEST_F(SafeUploadTest, BelievesTheListingRatherThanTheAnswer) {
  remote() = {{"a.csv", "old"}};
  internet.fault = [&](const std::string& call) -> std::optional<FakeInternet::Failure> {
    if (!call.starts_with("rename")) return std::nullopt;
    remote() = {{"a.csv", "new"}};
    return FakeInternet::Failure{12002};  // done, but the answer was lost
  };
  EXPECT_TRUE(send("a.csv"));
  EXPECT_EQ(logged(), kDone);
}

TEST_F(SafeUploadTest, PassesOverAMissingLocalFile) {
  EXPECT_FALSE(upload.Ftp_PutFile(std::string(kFolder) + kSeparator, "a.csv"));
  EXPECT_EQ(changes(), Calls{});
  EXPECT_EQ(logged(), Calls{});
  EXPECT_EQ(status(), "");
}

TEST_F(SafeUploadTest, DeletesOnlyWhatTheLastListingShows) {
  remote() = {{"1200345.info", ""}};
  upload.Ftp_DeleteListed("1200345.inf");
  EXPECT_EQ(changes(), Calls{}) << "not listed yet";

  listing.Ftp_ListFiles();
  internet.calls.clear();
  upload.Ftp_DeleteListed("200345.inf");
  upload.Ftp_DeleteListed("1200345.inff");
  EXPECT_EQ(internet.calls, Calls{});
  upload.Ftp_DeleteListed("1200345.inf");
  EXPECT_EQ(internet.calls, Calls{"delete 1200345.inf"}) << "a listed name begins with it";
  EXPECT_EQ(status(), "");
  EXPECT_EQ(logged(), Calls{});
}

}  // namespace
}  // namespace karvel
