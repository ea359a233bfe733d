#include "ftp/site_session.h"

#include <gtest/gtest.h>

#include <limits>

#include "fakes/shop_world.h"
#include "text/code_page.h"
#include "text/strings.h"
#include "ui/configured_values.h"

namespace karvel {
namespace {

using Entry = Internet::FindData;
using Field = FtpForm::Field;
using Folder = FakeInternet::Folder;
using Strings = std::vector<std::string>;

/// The FTP rooms of a shop that sends to its own site: the panel shows a complete account, and the
/// session object is not connected.
class FtpRooms : public ::testing::Test, protected ShopWorld {
 protected:
  FtpForm& form = openPanel();
  IniRedWrt settings{*platform().profile, files, clock};
  RunLog log{files, clock, kFolder};
  McWinFTP clsFtp{internet, [this](std::int32_t number, const std::string& text) {
                    form.clsFtp_FTPFrr(number, text);
                  }};
  RemoteListing listing{form, clsFtp};
  ServerList servers{files, settings, kFolder};
  ServerConnection connection{form, clsFtp, listing, servers, settings};
  SafeUpload upload{form, clsFtp, listing, files, log};

  FtpRooms() {
    settings.locateOwnIni(kFolder);
    settings.locateTicketIni(kFolder);
  }

  void type(Field::Index field, const std::string& text) { form.Text1[field].setText(text); }
  /// Calls that begin with `word` fail so.
  void refuse(const std::string& word, FakeInternet::Failure failure) {
    internet.fault = [word, failure](const std::string& call) {
      return call.starts_with(word) ? std::optional(failure) : std::nullopt;
    };
  }
  Folder& remote() { return internet.folders["/"]; }
  /// The calls that change something, in the session or at the server, since it was asked last.
  Strings changes() {
    Strings found;
    for (const std::string& call : std::exchange(internet.calls, {})) {
      if (call.find(' ') != std::string::npos) found.push_back(fromCodePage932(call));
    }
    return found;
  }
  [[nodiscard]] const std::string& status() const { return form.MsgLabel.caption(); }

 private:
  FtpForm& openPanel() {
    useOwnSite();
    EXPECT_EQ(start("-INIT"), StartOutcome::kPanel);
    return ShopWorld::form();
  }
};

class OwnSite : public FtpRooms {
 protected:
  OwnSite() {
    for (const char* path : {"/表町", "/表町/ソ", "/shops"}) {
      internet.folders[toCodePage932(path)] = {};
    }
  }

  bool open(const std::string& folder) {
    type(Field::kSiteFolder, folder);
    return connection.Ftp_Open();
  }
};

TEST_F(OwnSite, OpensWithThePanelsAccount) {
  type(Field::kServer, " ftp.example.org ");
  type(Field::kAccount, " user");
  type(Field::kPassword, "pass ");
  form.chkPassive.setValue(1);
  ASSERT_TRUE(open(""));
  EXPECT_EQ(internet.account.host, "ftp.example.org");
  EXPECT_EQ(internet.account.user, "user");
  EXPECT_EQ(internet.account.password, "pass");
  EXPECT_EQ(internet.connectFlags, 0x18000000U);
  EXPECT_EQ(status(), "FTP:OPEN OK");
  EXPECT_EQ(form.lstFiles.items().size(), 3U) << "the login folder is listed";

  const std::pair<std::string, int> ports[] = {{"", 21},         {"21.5", 22},  {"20", 21},
                                               {"60000", 60000}, {"60001", 21}, {"-2121", 21},
                                               {"6 0 0x", 600}};
  form.chkPassive.setValue(0);
  for (const auto& [text, port] : ports) {
    type(Field::kPort, text);
    ASSERT_TRUE(open(""));
    EXPECT_EQ(internet.account.port, port) << text;
    EXPECT_EQ(internet.connectFlags, 0x10000000U);
  }
}

TEST_F(OwnSite, WalksDownTheFolder) {
  const struct {
    std::string folder;
    bool found;
    Strings changes;
  } cases[] = {
      {" 表町/ソ ", true, {"cd 表町", "cd ソ"}},
      {"/表町//ソ/", true, {"cd 表町", "cd ソ"}},
      {"\\表町\\ソ\\", true, {"cd 表町", "cd ソ"}},
      {"/", true, {}},
      {"表町\\ソ/x", false, {}},
      {"表町/無", false, {"cd 表町"}},
      {"hops", false, {}},
      // The change fails, and the walk goes on where the server is.
      {"shop/表町", true, {"cd shop", "cd 表町"}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(open(c.folder), c.found) << c.folder;
    EXPECT_EQ(changes(), c.changes) << c.folder;
    EXPECT_EQ(status(), c.found ? "FTP:OPEN OK" : "指定フォルダがありません") << c.folder;
    EXPECT_EQ(clsFtp.hFTP() != 0, c.found) << c.folder;
    clsFtp.CloseSession();
  }
  refuse("list", {12030});
  EXPECT_FALSE(open("表町"));
  EXPECT_EQ(status(), "指定フォルダがありません") << "where nothing is listed";
}

class ServiceSite : public FtpRooms {
 protected:
  ServiceSite() {
    form.Option2[FtpForm::Destination::kServiceSite].select();
    setTicket(kFtp, "FTP USER", "user");
    setTicket(kFtp, "FTP CODE", "K-1234567");
  }

  void putList(const std::string& text) { files.files[kList].content = toCodePage932(text); }

  const std::string kFtp = "FTP INFOMATION";
  const std::string kMail = "MAIL INFOMATION";
  const std::string kList = path("kvserver.ini");
  const std::string kHost = configured::kServiceHost;
  const std::string kDomain = configured::kServiceDomain;
};

TEST_F(ServiceSite, BuildsItsAccountFromTheTicketApplicationsSettings) {
  const std::string hosting = std::string("ftp.") + configured::kProviderWord + ".example";
  const std::string prefix = configured::kPasswordPrefix;
  const std::string hostingPrefix = configured::kProviderPasswordPrefix;
  const struct {
    std::string list, code, host, user, password;
  } cases[] = {
      {"", "K-1234567", kHost, "user@" + kDomain, prefix + "234567"},
      {"0005 d.example", "123", kHost, "user@d.example", prefix + "123"},
      {"0004 " + hosting + "\r\n0005 domain.jp", "店舗コード番号", hosting, "domainuser",
       hostingPrefix + "舗コード番号"},
      {"0004 " + hosting + "\r\n0005 jp", "123456", hosting, "user", hostingPrefix + "123456"},
      {"0004 HOSTING.example\r\n0005 d", "123456", "HOSTING.example", "user@d", prefix + "123456"},
  };
  type(Field::kSiteFolder, "ignored here");
  for (const auto& c : cases) {
    putList(c.list);
    setTicket(kFtp, "FTP CODE", c.code);
    EXPECT_TRUE(connection.Ftp_Open());
    EXPECT_EQ(internet.account.host, c.host);
    EXPECT_EQ(internet.account.user, c.user);
    EXPECT_EQ(fromCodePage932(internet.account.password.value_or("")), c.password);
    EXPECT_EQ(internet.account.port, 21);
  }
  const std::pair<const char*, int> modes[] = {{"x-Pasv;", 1}, {"PORT", 0}, {"PASV", 1}};
  setTicket(kFtp, "FTP PORT", "2121");
  for (const auto& [mode, passive] : modes) {
    setTicket(kFtp, "FTP MODE", mode);
    EXPECT_TRUE(connection.Ftp_Open());
    EXPECT_EQ(form.chkPassive.value(), passive) << mode;
    EXPECT_EQ(internet.connectFlags, passive != 0 ? 0x18000000U : 0x10000000U) << mode;
    EXPECT_EQ(internet.account.port, 2121);
  }
}

TEST_F(ServiceSite, ReadsAServerListWhateverItHolds) {
  const struct {
    std::string text, host, mail, ftp;
  } cases[] = {
      {"0004 a\r\n0003 b\r\n0005 c\r\n", "a", "b", "c"},
      {"4abcda\r\n  4 =b\r\n3...=m", "b", "m", kDomain},
      {"0004= a b ", " a b ", kDomain, kDomain},
      {"0004 a\r\n0004    \r\n0004\r\n004 b", "a", kDomain, kDomain},
      {"0006 a\r\n0000 b\r\n-004 c\r\n4.5  d\r\n000４ e\r\n0044 f", kHost, kDomain, kDomain},
      {"表示ソ能x0004 a\r\n0004表b\r\n", "b", kDomain, kDomain},
      {std::string("\0\0\xFF\n\r\r\n", 6) + "\n0004 a", "a", kDomain, kDomain},
  };
  for (const auto& c : cases) {
    putList(c.text);
    servers.LoadServerList();
    EXPECT_EQ(servers.FtpServerHost, c.host);
    EXPECT_EQ(servers.MailDomain, c.mail);
    EXPECT_EQ(servers.FtpDomain, c.ftp);
  }
}

TEST_F(ServiceSite, CarriesTheListsDomainsIntoTheTicketApplicationsSettings) {
  const auto domainsAfter = [this](const std::string& before) {
    setTicket(kMail, "DOMAIN", before);
    setTicket(kFtp, "DOMAIN", before);
    files.written.clear();
    servers.LoadServerList();
    return ticket(kMail, "DOMAIN") + "|" + ticket(kFtp, "DOMAIN");
  };
  EXPECT_EQ(domainsAfter("other"), "other|other") << "there is no list";
  putList("0003  m.example \r\n0005 f.example ");
  EXPECT_EQ(domainsAfter("other"), "m.example|f.example");
  EXPECT_EQ(domainsAfter(""), "|");
  EXPECT_EQ(domainsAfter("f.example"), "m.example|f.example");
  EXPECT_EQ(files.written.size(), 1U) << "the same domain is not written again";
}

constexpr DateTime kMoment{2024, 1, 15, 9, 5, 59};
const std::string kDate = "\t2024/01/15 09:05";

Entry file(const std::string& name, std::uint64_t size = 0) {
  return {toCodePage932(name), false, size, kMoment};
}

Entry folder(const std::string& name) {
  return {toCodePage932(name), true, 0, kMoment};
}

class RemoteListingTest : public FtpRooms {
 protected:
  void SetUp() override { clsFtp.OpenSession(); }

  Strings refreshed(const std::vector<Entry>& entries) {
    internet.extraEntries = entries;
    listing.Ftp_ListFiles();
    return form.lstFiles.items();
  }
};

TEST_F(RemoteListingTest, ShowsFoldersAndFilesInTheServersOrder) {
  EXPECT_EQ(refreshed({file("表.csv", 1234567), folder(".."), folder("表"), file("a"),
                       file("b", 999), file("c", 1000), file("d", 5000000000)}),
            (Strings{". ", "F 表.csv\t1,234,567" + kDate, "D ..\t " + kDate, "D 表\t " + kDate,
                     "F a\t0" + kDate, "F b\t999" + kDate, "F c\t1,000" + kDate,
                     "F d\t5,000,000,000" + kDate}));
}

TEST_F(RemoteListingTest, HeadsEveryFolderButTheRootWithTwoStops) {
  EXPECT_EQ(refreshed({}), (Strings{". "}));
  internet.folders["/sub"] = {};
  clsFtp.CurDir("sub");
  EXPECT_EQ(refreshed({}), (Strings{".."}));
  refuse("pwd", {12002});
  EXPECT_EQ(refreshed({}), (Strings{".."})) << "a folder that cannot be told is not the root";
}

TEST_F(RemoteListingTest, FindsWhatTheLastRefreshSaw) {
  constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
  refreshed({folder("a"), file("b", 2147483648), file("a", 7)});
  EXPECT_EQ(listing.findFolder("D a\t"), 0U);
  EXPECT_EQ(listing.findFile("F a\t"), 1U);
  EXPECT_EQ(listing.fileSize(1), 7);
  EXPECT_EQ(listing.fileSize(0), kLargest) << "a slot holds no more";
  EXPECT_EQ(listing.findFolder("D b"), std::nullopt);
  refreshed({file("c", 5)});
  EXPECT_EQ(listing.fileSize(0), 5);
  EXPECT_EQ(listing.findFolder("D a\t"), std::nullopt);
  EXPECT_EQ(listing.findFile("F a\t"), std::nullopt);
}

TEST_F(RemoteListingTest, CutsSlotsAfter128Characters) {
  for (const std::string character : {"x", "あ"}) {
    std::string name;
    for (int i = 0; i < 125; ++i) name += character;
    const std::string cut = "F " + name + character;
    const auto lines = refreshed({file(name), file(name + character)});
    EXPECT_EQ(listing.findFile("F " + name + "\t"), 0U);
    EXPECT_EQ(listing.findFile(cut), 1U);
    EXPECT_EQ(listing.findFile(cut + "\t"), std::nullopt);
    EXPECT_EQ(lines[2], cut + "\t0" + kDate) << "shown whole";
  }
}

TEST_F(RemoteListingTest, ShowsMoreEntriesThanItKeeps) {
  std::vector<Entry> entries;
  for (int i = 0; i < 10002; ++i) {
    entries.push_back(file("f" + std::to_string(i)));
    entries.push_back(folder("d" + std::to_string(i)));
  }
  EXPECT_EQ(refreshed(entries).size(), 20005U);
  EXPECT_EQ(listing.findFile("F f10000\t"), 10000U);
  EXPECT_EQ(listing.findFolder("D d10000\t"), 10000U);
  EXPECT_EQ(listing.findFile("F f10001\t"), std::nullopt);
  EXPECT_EQ(listing.findFolder("D d10001\t"), std::nullopt);
}

TEST_F(RemoteListingTest, KeepsWhatItHasReadWhenTheEnumerationFails) {
  refuse("next", {12031});
  EXPECT_EQ(refreshed({file("a"), file("b")}).size(), 2U);
  EXPECT_EQ(listing.findFile("F a\t"), 0U);
  EXPECT_TRUE(form.LastFtpError.starts_with("12031/"));
  refuse("list", {12002});
  EXPECT_EQ(refreshed({file("a")}), (Strings{". "}));
}

TEST(IsBinaryFileTest, LooksForTextExtensionsAnywhereInTheName) {
  for (const char* name : {"a.ini", "a.cgi", "a.php", "a.txt", "a.tmp", "a.new", "a.mas", "a.htm",
                           "a.inf", "A.CSV", "a.html", "a.txt.zip"}) {
    EXPECT_FALSE(IsBinaryFile(name)) << name;
  }
  for (const char* name : {"a.zip", "csv", "a.c.sv", "ａ．ｃｓｖ"}) {
    EXPECT_TRUE(IsBinaryFile(name)) << name;
  }
}

class SafeUploadTest : public FtpRooms {
 protected:
  void SetUp() override { clsFtp.OpenSession(); }

  bool send(const std::string& name) {
    files.files[path(name)].content = "new";
    internet.calls.clear();
    files.files.erase(logPath());
    return upload.Ftp_PutFile(path(""), name);
  }

  const std::string kStamp = "2024/01/15 09:05:07\t";
  const std::string kDone = kStamp + "HS-FTP:RenameFile\r\n" + kStamp + "HS-FTP:PutFile OK\r\n";
};

TEST_F(SafeUploadTest, SendsUnderATemporaryName) {
  const std::pair<std::string, std::string> cases[] = {
      {"a.csv", "a.xxx"}, {"表.zip", "表.xxx"}, {"集計表一覧", "集計xxx"}, {"ab", "xxx"}};
  for (const auto& [name, temp] : cases) {
    remote() = {{toCodePage932(name) + ".bak", ""}};
    EXPECT_TRUE(send(name)) << name;
    EXPECT_EQ(changes(), (Strings{"put " + temp, "rename " + temp + " " + name}));
    EXPECT_EQ(internet.transferType, name == "a.csv" ? 1U : 2U) << name;
    EXPECT_EQ(status(), "FTP:PutFile OK");
    EXPECT_EQ(content(logPath()), kDone);
  }
}

TEST_F(SafeUploadTest, EndsAtTheFirstStepThatFails) {
  const std::string earlier = fixedWidth("12002/要求がタイムアウトになりました。", 128);
  const std::string refused = fixedWidth("12003/550 no", 128);
  const Strings renamed{"put a.xxx", "delete a.csv", "rename a.xxx a.csv"};
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
    EXPECT_EQ(content(logPath()), kStamp + "HS-" + text + "\r\n");
    EXPECT_EQ(changes(), Strings(renamed.begin(), renamed.begin() + std::ptrdiff_t(c.changes)));
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
  EXPECT_FALSE(upload.Ftp_PutFile(path(""), "a.csv"));
  EXPECT_EQ(changes(), Strings{});
  EXPECT_EQ(content(logPath()) + status(), "");
}

TEST_F(SafeUploadTest, DeletesOnlyWhatTheLastListingShows) {
  remote() = {{"1200345.info", ""}};
  upload.Ftp_DeleteListed("1200345.inf");  // not listed yet
  listing.Ftp_ListFiles();
  upload.Ftp_DeleteListed("200345.inf");
  upload.Ftp_DeleteListed("1200345.inff");
  EXPECT_EQ(changes(), Strings{});
  upload.Ftp_DeleteListed("1200345.inf");
  EXPECT_EQ(internet.calls, Strings{"delete 1200345.inf"}) << "a listed name begins with it";
  EXPECT_EQ(content(logPath()) + status(), "");
}

}  // namespace
}  // namespace karvel
