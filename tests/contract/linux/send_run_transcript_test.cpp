#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "contract/run_report.h"
#include "contract/site_shop.h"
#include "text/code_page.h"

// The commands of whole send runs, word for word.

namespace karvel {
namespace {

using Lines = std::vector<std::string>;
using Delivery = RunReport::Delivery;

const Lines kLogin{"USER shop", "PASS secret"};
const Lines kRefresh{"PWD", "PASV", "LIST"};
const Lines kFirstRefresh{"PWD", "TYPE A", "PASV", "LIST"};

Lines joined(const std::vector<Lines>& parts) {
  Lines all;
  for (const Lines& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

Lines entered(const std::string& folder) {
  return joined({{"CWD " + toCodePage932(folder)}, kRefresh});
}

Lines uploaded(const std::string& temporaryName) {
  return joined({{"PASV", "STOR " + temporaryName}, kRefresh});
}

Lines deleted(const std::string& name) {
  return joined({{"DELE " + name}, kRefresh});
}

Lines renamed(const std::string& temporaryName, const std::string& name) {
  return joined({{"RNFR " + temporaryName, "RNTO " + name}, kRefresh});
}

const std::string kTable = SiteShop::kTable;
const std::string kTableTemp = "00345_240115.xxx";
const std::string kInfo = SiteShop::kShopInfo;
const std::string kInfoTemp = "1200345.xxx";

Lines newFile(const std::string& temporaryName, const std::string& name) {
  return joined({uploaded(temporaryName), renamed(temporaryName, name)});
}

Lines replacedFile(const std::string& temporaryName, const std::string& name) {
  return joined({uploaded(temporaryName), deleted(name), renamed(temporaryName, name)});
}

const Lines kBothNew = joined({newFile(kInfoTemp, kInfo), newFile(kTableTemp, kTable)});

class SendRunTranscript : public ::testing::Test {
 protected:
  /// One run; what its log tells.
  RunReport run() {
    shop_.start();
    shop_.send();
    return reportOf(shop_.takeLog());
  }
  void addOldFiles() {
    server_.tree().addFile("/in/" + kInfo, "old");
    server_.tree().addFile("/in/" + kTable, "old");
  }
  const std::string& status() { return shop_.form().MsgLabel.caption(); }

  ScriptedFtpServer server_;
  SiteShop shop_{server_};
};

TEST_F(SendRunTranscript, AFirstUpload) {
  server_.tree().addFolder("/in");
  EXPECT_TRUE(run().succeeded());
  EXPECT_EQ(server_.transcript(),
            joined({kLogin, kFirstRefresh, entered("in"), kBothNew, {"QUIT"}}));
}

TEST_F(SendRunTranscript, AReplacementStaysBelowItsNumberOfCommands) {
  constexpr std::size_t kMostCommands = 44;
  addOldFiles();
  EXPECT_TRUE(run().succeeded());
  const Lines lines = server_.transcript();
  EXPECT_EQ(lines, joined({kLogin,
                           kFirstRefresh,
                           entered("in"),
                           replacedFile(kInfoTemp, kInfo),
                           replacedFile(kTableTemp, kTable),
                           {"QUIT"}}));
  std::cout << "commands of a run that replaces both files: " << lines.size() << "\n";
  RecordProperty("commands", static_cast<int>(lines.size()));
  EXPECT_LE(lines.size(), kMostCommands);
}

TEST_F(SendRunTranscript, AnActiveSessionOpensEachConnectionItself) {
  addOldFiles();
  shop_.setPassive(false);
  EXPECT_TRUE(run().succeeded());
  Lines expected = joined({kLogin,
                           kFirstRefresh,
                           entered("in"),
                           replacedFile(kInfoTemp, kInfo),
                           replacedFile(kTableTemp, kTable),
                           {"QUIT"}});
  std::replace(expected.begin(), expected.end(), std::string("PASV"), std::string("PORT"));
  EXPECT_EQ(server_.transcript(), expected);
}

TEST_F(SendRunTranscript, ARefusedDeleteIsNotFollowedByARename) {
  addOldFiles();
  server_.on("DELE", 1, FtpFault::refuse("550 In use."));
  const RunReport report = run();
  EXPECT_EQ(report.shopInfo, Delivery::kNotRenamed);
  EXPECT_TRUE(report.succeeded());
  EXPECT_EQ(server_.transcript(), joined({kLogin,
                                          kFirstRefresh,
                                          entered("in"),
                                          uploaded(kInfoTemp),
                                          deleted(kInfo),
                                          replacedFile(kTableTemp, kTable),
                                          {"QUIT"}}));
  EXPECT_EQ(server_.tree().content("/in/" + kInfo), "old");
  EXPECT_TRUE(server_.tree().isFile("/in/" + kInfoTemp));
}

TEST_F(SendRunTranscript, ARefusedRenameFailsTheRun) {
  addOldFiles();
  server_.on("RNTO", 2, FtpFault::refuse("553 Not this name."));
  const RunReport report = run();
  EXPECT_EQ(report.shopInfo, Delivery::kDone);
  EXPECT_EQ(report.table, Delivery::kNotRenamed);
  EXPECT_TRUE(status().starts_with("FTP:Rename NG 12003/553 Not this name.")) << status();
  EXPECT_EQ(server_.transcript(), joined({kLogin,
                                          kFirstRefresh,
                                          entered("in"),
                                          replacedFile(kInfoTemp, kInfo),
                                          replacedFile(kTableTemp, kTable),
                                          {"QUIT"}}));
  EXPECT_FALSE(server_.tree().isFile("/in/" + kTable));
}

TEST_F(SendRunTranscript, AChangedIdentifierDeletesTheFormerFileFirst) {
  server_.tree().addFile("/in/1200344.inf", "former");
  shop_.setOwn("GRUP BACK", "1200344");
  EXPECT_TRUE(run().succeeded());
  EXPECT_EQ(
      server_.transcript(),
      joined({kLogin, kFirstRefresh, entered("in"), {"DELE 1200344.inf"}, kBothNew, {"QUIT"}}));
}

TEST_F(SendRunTranscript, AFolderIsEnteredLevelByLevel) {
  // 表, ソ and 能 have 0x5C, the byte of "\", as their second one.
  const struct {
    const char* folder;
    Lines levels;
  } cases[] = {
      {"", {}},
      {"/支店/表/ソ能/", {"支店", "表", "ソ能"}},
      {"支店\\表\\ソ能", {"支店", "表", "ソ能"}},
      {" //支店// ", {"支店"}},
  };
  for (const auto& testCase : cases) {
    ScriptedFtpServer server;
    std::string path;
    Lines walk;
    for (const std::string& level : testCase.levels) {
      path.append("/").append(toCodePage932(level));
      walk = joined({walk, entered(level)});
    }
    if (!path.empty()) server.tree().addFolder(path);
    SiteShop shop(server);
    shop.setOwn("FTP FOLD", testCase.folder);
    shop.start();
    shop.send();
    EXPECT_TRUE(reportOf(shop.takeLog()).succeeded()) << testCase.folder;
    EXPECT_EQ(server.transcript(), joined({kLogin, kFirstRefresh, walk, kBothNew, {"QUIT"}}));
    EXPECT_TRUE(server.tree().isFile(path.append("/").append(kTable))) << testCase.folder;
  }
}

TEST(SendRunServiceTranscript, AServiceAccountStaysInItsLoginFolder) {
  ScriptedFtpServer::Options options;
  options.user = "noto345@shop.service.example";
  options.password = "kv112233";
  ScriptedFtpServer server(options);
  server.tree().addFolder("/in");
  SiteShop shop(server);
  shop.useServiceSite();
  shop.start();
  shop.send();
  EXPECT_TRUE(reportOf(shop.takeLog()).succeeded());
  EXPECT_EQ(server.transcript(), joined({{"USER noto345@shop.service.example", "PASS kv112233"},
                                         kFirstRefresh,
                                         kBothNew,
                                         {"QUIT"}}));
  EXPECT_TRUE(server.tree().isFile("/" + kTable));
}

}  // namespace
}  // namespace karvel
