#include "ftp/server_connection.h"

#include <gtest/gtest.h>

#include "fakes/ftp_rooms.h"
#include "text/strings.h"
#include "ui/configured_values.h"

namespace karvel {
namespace {

using Field = FtpForm::Field;
using Calls = std::vector<std::string>;

class OwnSite : public ::testing::Test, protected FtpRooms {
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
  EXPECT_EQ(internet.account.port, 2121);
  EXPECT_EQ(internet.connectFlags, 0x18000000U);
  EXPECT_EQ(status(), "FTP:OPEN OK");
  EXPECT_EQ(form.lstFiles.items().size(), 3U) << "the login folder is listed";

  const std::pair<std::string, int> ports[] = {
      {"", 21}, {"21.5", 22}, {"60001", 21}, {"20", 21}, {"6 0 0x", 600}};
  form.chkPassive.setValue(0);
  for (const auto& [text, port] : ports) {
    type(Field::kPort, text);
    ASSERT_TRUE(open(""));
    EXPECT_EQ(internet.account.port, port) << text;
    EXPECT_EQ(internet.connectFlags, 0x10000000U);
  }
}

TEST_F(OwnSite, TellsWhyTheLoginFailed) {
  refuse("connect", {12029});
  EXPECT_FALSE(open(""));
  EXPECT_EQ(status(), "FTP:OPEN NG " + fixedWidth("12029/サーバー接続に失敗しました。", 128));
}

TEST_F(OwnSite, WalksDownTheFolder) {
  const struct {
    std::string folder;
    bool found;
    Calls changes;
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
    internet.calls.clear();
    EXPECT_EQ(open(c.folder), c.found) << c.folder;
    Calls changes;
    for (const std::string& call : internet.calls) {
      if (call.starts_with("cd ")) changes.push_back(fromCodePage932(call));
    }
    EXPECT_EQ(changes, c.changes) << c.folder;
    EXPECT_EQ(status(), c.found ? "FTP:OPEN OK" : "指定フォルダがありません") << c.folder;
    EXPECT_EQ(clsFtp.hFTP() != 0, c.found) << c.folder;
    clsFtp.CloseSession();
  }
  refuse("list", {12030});
  EXPECT_FALSE(open("表町"));
  EXPECT_EQ(status(), "指定フォルダがありません") << "where nothing is listed";
}

class ServiceSite : public ::testing::Test, protected FtpRooms {
 protected:
  ServiceSite() {
    form.Option2[FtpForm::Destination::kServiceSite].select();
    setTicket(section::kFtp, "FTP USER", "user");
    setTicket(section::kFtp, "FTP CODE", "K-1234567");
  }

  void putList(const std::string& text) { files.files[kList].content = toCodePage932(text); }

  const std::string kList = joinPath(kFolder, "kvserver.ini");
  const std::string kHost = configured::kServiceHost;
  const std::string kDomain = configured::kServiceDomain;
};

TEST_F(ServiceSite, BuildsItsAccountFromTheTicketApplicationsSettings) {
  const std::string hosting = std::string("ftp.") + configured::kProviderWord + ".example";
  const std::string prefix = configured::kPasswordPrefix;
  const std::string hostingPrefix = configured::kProviderPasswordPrefix;
  const struct {
    std::string list;
    std::string code;
    std::string host;
    std::string user;
    std::string password;
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
    setTicket(section::kFtp, "FTP CODE", c.code);
    EXPECT_TRUE(connection.Ftp_Open());
    EXPECT_EQ(internet.account.host, c.host);
    EXPECT_EQ(internet.account.user, c.user);
    EXPECT_EQ(fromCodePage932(internet.account.password.value_or("")), c.password);
    EXPECT_EQ(internet.account.port, 21);
  }
  const std::pair<const char*, int> modes[] = {{"x-Pasv;", 1}, {"PORT", 0}, {"PASV", 1}};
  setTicket(section::kFtp, "FTP PORT", "2121");
  for (const auto& [mode, passive] : modes) {
    setTicket(section::kFtp, "FTP MODE", mode);
    EXPECT_TRUE(connection.Ftp_Open());
    EXPECT_EQ(form.chkPassive.value(), passive) << mode;
    EXPECT_EQ(internet.connectFlags, passive != 0 ? 0x18000000U : 0x10000000U) << mode;
    EXPECT_EQ(internet.account.port, 2121);
  }
}

TEST_F(ServiceSite, ReadsAServerListWhateverItHolds) {
  const struct {
    std::string text;
    std::string host;
    std::string mail;
    std::string ftp;
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
    setTicket(section::kMail, "DOMAIN", before);
    setTicket(section::kFtp, "DOMAIN", before);
    files.written.clear();
    servers.LoadServerList();
    return settings.read(ticket::kMailDomain) + "|" + settings.read(ticket::kDomain);
  };
  EXPECT_EQ(domainsAfter("other"), "other|other") << "there is no list";
  putList("0003  m.example \r\n0005 f.example ");
  EXPECT_EQ(domainsAfter("other"), "m.example|f.example");
  EXPECT_EQ(domainsAfter(""), "|");
  EXPECT_EQ(domainsAfter("f.example"), "m.example|f.example");
  EXPECT_EQ(files.written.size(), 1U) << "the same domain is not written again";
}

}  // namespace
}  // namespace karvel
