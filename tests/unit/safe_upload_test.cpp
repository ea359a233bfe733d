#include "ftp/safe_upload.h"

#include <gtest/gtest.h>

#include "fakes/ftp_rooms.h"
#include "text/strings.h"

namespace karvel {
namespace {

using Calls = std::vector<std::string>;
using Folder = FakeInternet::Folder;

TEST(IsBinaryFileTest, LooksForTextExtensionsAnywhereInTheName) {
  for (const char* name : {"a.ini", "a.cgi", "a.php", "a.txt", "a.tmp", "a.new", "a.mas", "a.htm",
                           "a.inf", "A.CSV", "a.html", "a.txt.zip"}) {
    EXPECT_FALSE(IsBinaryFile(name)) << name;
  }
  for (const char* name : {"a.zip", "csv", "a.c.sv", "ａ．ｃｓｖ"}) {
    EXPECT_TRUE(IsBinaryFile(name)) << name;
  }
}

class SafeUploadTest : public ::testing::Test, protected FtpRooms {
 protected:
  SafeUploadTest() { clsFtp.OpenSession(); }

  bool send(const std::string& name) {
    files.files[joinPath(kFolder, name)].content = "new";
    internet.calls.clear();
    files.files.erase(kLog);
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
  std::string logged() { return fromCodePage932(files.files[kLog].content); }
  Folder& remote() { return internet.folders["/"]; }

  const std::string kLog = joinPath(joinPath(kFolder, "Log"), "240115.log");
  const std::string kStamp = "2024/01/15 09:05:07\t";
  const std::string kDone = kStamp + "HS-FTP:RenameFile\r\n" + kStamp + "HS-FTP:PutFile OK\r\n";
};

TEST_F(SafeUploadTest, SendsUnderATemporaryName) {
  const std::pair<std::string, std::string> cases[] = {
      {"a.csv", "a.xxx"}, {"表.zip", "表.xxx"}, {"集計表一覧", "集計xxx"}, {"ab", "xxx"}};
  for (const auto& [name, temp] : cases) {
    remote() = {{toCodePage932(name) + ".bak", ""}};
    EXPECT_TRUE(send(name)) << name;
    EXPECT_EQ(changes(), (Calls{"put " + temp, "rename " + temp + " " + name}));
    EXPECT_EQ(internet.transferTypes[toCodePage932(temp)], name == "a.csv" ? 1U : 2U) << name;
    EXPECT_EQ(status(), "FTP:PutFile OK");
    EXPECT_EQ(logged(), kDone);
  }
}

TEST_F(SafeUploadTest, EndsAtTheFirstStepThatFails) {
  const std::string earlier = fixedWidth("12002/要求がタイムアウトになりました。", 128);
  const std::string refused = fixedWidth("12003/550 no", 128);
  const Calls renamed{"put a.xxx", "delete a.csv", "rename a.xxx a.csv"};
  const Folder old{{"a.csv", "old"}};
  const Folder both{{"a.csv", "old"}, {"a.xxx", "new"}};
  const struct {
    std::string call;
    bool refuses;  ///< or it succeeds without an effect; then the error before stays
    std::size_t changes;
    Folder left;
  } cases[] = {
      {"put", true, 1, old},
      {"put", false, 1, old},
      {"list", true, 1, both},
      {"delete", true, 2, both},
      {"delete", false, 2, both},
      {"rename", true, 3, {{"a.xxx", "new"}}},
      {"rename", false, 3, {{"a.xxx", "new"}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.call);
    remote() = old;
    form.LastFtpError = earlier;
    refuse(c.call, c.refuses ? FakeInternet::Failure{12003, "550 no"} : FakeInternet::Failure{});
    EXPECT_FALSE(send("a.csv"));
    const bool notSent = c.call == "put" && c.refuses;
    const std::string text =
        (notSent ? "FTP:PutFile NG " : "FTP:Rename NG ") + (c.refuses ? refused : earlier);
    EXPECT_EQ(status(), text);
    EXPECT_EQ(logged(), kStamp + "HS-" + text + "\r\n");
    EXPECT_EQ(changes(), Calls(renamed.begin(), renamed.begin() + std::ptrdiff_t(c.changes)));
    EXPECT_EQ(remote(), c.left);
    internet.fault = nullptr;
    EXPECT_TRUE(send("a.csv")) << "the next upload takes the same temporary name";
    EXPECT_EQ(remote(), (Folder{{"a.csv", "new"}}));
  }
}

TEST_F(SafeUploadTest, BelievesTheListingRatherThanTheAnswer) {
  internet.fault = [&](const std::string& call) -> std::optional<FakeInternet::Failure> {
    if (!call.starts_with("rename")) return std::nullopt;
    remote() = {{"a.csv", "new"}};
    return FakeInternet::Failure{12002};  // done, but the answer was lost
  };
  EXPECT_TRUE(send("a.csv"));
}

TEST_F(SafeUploadTest, PassesOverAMissingLocalFile) {
  EXPECT_FALSE(upload.Ftp_PutFile(std::string(kFolder) + kSeparator, "a.csv"));
  EXPECT_EQ(changes(), Calls{});
  EXPECT_EQ(logged() + status(), "");
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
  EXPECT_EQ(logged() + status(), "");
}

}  // namespace
}  // namespace karvel
