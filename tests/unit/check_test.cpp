#include "app/shop_check.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fakes/fake_inspection.h"
#include "fakes/shop_world.h"
#include "text/code_page.h"
#include "text/path.h"
#include "text/strings.h"

namespace karvel {
namespace {

constexpr const char* kPassword = "open<sesame>&";
constexpr const char* kOwnFile = "karvel.hnb";

/// A shop in good order, whose program runs.
struct CheckedShop : ShopWorld {
  FakeInspection system{files};
  bool probe = false;

  explicit CheckedShop(bool site) {
    files.folders.insert("tmp");
    files.files[deskFile()].content = "1\t09:00:00\t09:05:00\t\t1\t\t\t0\t\t\t\r\n";
    files.files[outPath("00345_240115.txt")].content = "delivered";
    log({"Snd Start", "Ftp_ShopFold Exit", "HS-FTP:PutFile OK", "Snd Exit"});
    if (!site) return;
    useOwnSite();
    setOwn("FTP PASS", kPassword);
    setOwn("FTP FOLD", "branch");
    internet.folders["/branch"] = {{"00345_240115.txt", "delivered"}};
    // A server that repeats what it is told.
    internet.replies = std::string("220 ready\r\n331 who\r\n230 welcome ") + kPassword + "\r\n";
  }

  static std::string deskFile() { return path(joinPath("temp", "240115_1.tmp")); }
  std::string& ownFile() { return files.files[path(kOwnFile)].content; }
  void log(const std::vector<std::string>& messages) {
    std::string& text = files.files[logPath()].content;
    for (const auto& each : messages) text += "2024/01/15 09:00:00\t" + each + "\r\n";
  }
  Report check() { return checkShop(platform(), system, probe); }
};

struct Fault {
  const char* what;
  Mark mark;
  const char* anchor;  ///< of the finding that speaks
  std::function<void(CheckedShop&)> make;
  std::string_view words{};  ///< of that finding
};

using S = CheckedShop;

auto own(const char* key, const char* value) {
  return [=](S& s) { s.setOwn(key, value); };
}

auto without(const std::string& path) {
  return [=](S& s) { s.files.files.erase(path); };
}

/// Calls of the site that begin with these words fail.
auto refused(const std::string& words, Internet::ErrorNumber number) {
  return [=](S& s) {
    s.internet.fault = [=](const std::string& call) {
      return call.starts_with(words) ? std::optional(FakeInternet::Failure{number, "550 no"})
                                     : std::nullopt;
    };
  };
}

using enum Mark;
const std::vector<Fault> kFaults{
    {"saved as UTF-8", kTrouble, "settings-file",
     [](S& s) { s.ownFile() = fromCodePage932(s.ownFile()); }},
    {"a byte order mark", kTrouble, "settings-file",
     [](S& s) { s.ownFile().insert(0, "\xEF\xBB\xBF"); }},
    {"a second section", kTrouble, "settings-file",
     [](S& s) { s.ownFile() += "[ftp infomation]\r\n"; }},
    {"a second key", kNotice, "settings-file", [](S& s) { s.ownFile() += "ftp code=2\r\n"; }},
    {"what only looks like a slip", kGood, "settings-file",
     [](S& s) {
       std::string& text = s.ownFile();
       std::erase(text, '\n');
       text.replace(0, text.find(']') + 1,
                    "[A]\rFTP CODE=1\rFTP CODE=2\r[ FTP INFOMATION ] ; the shop");
     }},
    {"stray bytes", kNotice, "settings-file", [](S& s) { s.ownFile() += "\x81\x01\xFF\r\n"; }},
    {"no settings", kTrouble, "settings-file", without(S::path(kOwnFile))},
    {"another code page", kNotice, "code-page", [](S& s) { s.system.page = 1252; }},
    {"an unstorable folder", kTrouble, "code-page", own("OUT FOLD", "o?t")},
    {"no shop code", kTrouble, "shop-code", own("FTP CODE", "0")},
    {"a shop code that names no file", kTrouble, "shop-code", own("FTP CODE", "00345/2")},
    {"the first group code", kNotice, "identifier", own("GRUP CODE", "9999")},
    {"no destination", kTrouble, "destination", own("FTP TYPE", "3")},
    {"by hand", kNotice, "destination", own("FTP TIME", "0")},
    {"no ticket application", kTrouble, "ticket-app", own("HST FOLD", "elsewhere")},
    {"yesterday", kNotice, "today",
     [](S& s) { s.setTicket("USER INFOMATION", "TODAY", "240114"); }},
    {"an impossible day", kTrouble, "today",
     [](S& s) { s.setTicket("USER INFOMATION", "TODAY", "24/1/15"); }},
    {"too many desks", kNotice, "desks",
     [](S& s) { s.setTicket("TASHIN INFOMATION", "SHINSATSU", "9"); }},
    {"no reception file", kNotice, "reception-files", without(S::deskFile())},
    {"records of ten fields", kNotice, "reception-files",
     [](S& s) { s.files.files[S::deskFile()].content = "1\t2\t3\t4\t5\t6\t7\t8\t9\t10\r\n"; }},
    {"a text", kNotice, "txt-files", [](S& s) { s.files.files[S::path("memo.TXT")]; }},
    {"a leftover", kNotice, "leftovers",
     [](S& s) { s.files.files[S::path("karvel.hnb.unsaved-a")]; }},
    {"a full disk", kTrouble, "disk", [](S& s) { s.system.room = 1000; }},
    {"an open file", kNotice, "permissions", [](S& s) { s.system.readable = true; }},
    {"a closed program folder", kTrouble, "output-folder",
     [](S& s) { s.system.folderWritable = false; }},
    {"no output folder", kTrouble, "output-folder",
     [](S& s) { s.files.folders.erase(S::kOutFolder); }},
    {"a closed output folder", kTrouble, "output-folder",
     [](S& s) { s.files.unwritable.insert(S::outPath("karvel-check.tmp")); }},
    {"the program's folder", kTrouble, "output-folder", own("OUT FOLD", S::kFolder)},
    {"a read-only table", kTrouble, "output-folder",
     [](S& s) { s.files.files[S::path("00345_240115.txt")].readOnly = true; }},
    {"a folder in the table's place", kTrouble, "output-folder",
     [](S& s) { s.files.folders.insert(S::outPath("00345_240115.txt")); }},
    {"no temporary folder", kNotice, "output-folder", [](S& s) { s.files.folders.erase("tmp"); }},
    {"no table yet", kNotice, "old-table", without(S::outPath("00345_240115.txt"))},
    {"never tested", kTrouble, "resident", own("FTP CHKC", "0")},
    {"not running", kTrouble, "running", [](S& s) { s.system.runs = false; }},
    {"a message", kTrouble, "message-box", [](S& s) { s.system.message = "?"; }},
    {"no sign-in", kNotice, "sign-in", [](S& s) { s.system.atSignIn = false; }},
};

const std::vector<Fault> kSiteFaults{
    {"a code page of double bytes", kNotice, "server-names", [](S& s) { s.system.page = 936; }},
    {"no account", kTrouble, "account", own("FTP NAME", "")},
    {"failures", kNotice, "log",
     [](S& s) {
       s.log({"Snd Start", "Snd Exit", "Snd Start", "Ftp_ShopFold Exit",
              "HS-FTP:PutFile NG 12003/550 ", "Snd Exit"});
     },
     "その後の失敗は2回、最後は2024/01/15 09:00:00: FTP:PutFile NG 12003/550"},
    {"no such host", kTrouble, "name", [](S& s) { s.system.found.clear(); }},
    {"no way to the host", kTrouble, "connect",
     [](S& s) {
       refused("connect", Internet::kErrorCannotConnect)(s);
       s.internet.replies.clear();
     }},
    {"a wrong password", kTrouble, "login", refused("connect", Internet::kErrorLoginFailure)},
    {"no data connection", kTrouble, "data-connection", refused("list", Internet::kErrorTimeout)},
    {"an inner address", kNotice, "passive",
     [](S& s) { s.internet.replies += "227 Passive (10,0,0,1,4,5)\r\n"; }, "アドレス10.0.0.1は"},
    {"no such folder", kTrouble, "target-folder", own("FTP FOLD", "nowhere")},
    {"only a longer name", kTrouble, "target-folder", own("FTP FOLD", "bran")},
    {"a closed folder", kTrouble, "target-folder", refused("cd", Internet::kErrorExtended),
     "入れません"},
    {"an unfinished upload", kNotice, "temporary-file",
     [](S& s) { s.internet.folders["/branch"]["0.xxx"]; }},
    {"encryption", kNotice, "tls", [](S& s) { s.internet.offered = "211 AUTH TLS"; }},
    {"no folder for a trial", kNotice, "probe",
     [](S& s) {
       s.files.folders.erase("tmp");
       s.probe = true;
     }},
    {"no renaming", kTrouble, "probe",
     [](S& s) {
       refused("rename", Internet::kErrorExtended)(s);
       s.probe = true;
     }},
    {"no deleting", kTrouble, "probe",
     [](S& s) {
       refused("delete", 0)(s);
       s.probe = true;
     },
     "サイトに残ったもの: karvel-check.tmp"},
};

const char* const kStart =
    "良好 設定ファイル(karvel.hnb)は正しく読めます\n"
    "良好 店舗ｺｰﾄﾞは00345です\n"
    "良好 店舗情報の番号は1200345です\n";
const std::string kShop =
    "良好 転送間隔は5分ごとです\n"
    "良好 発券システムの設定は" +
    S::path("karvel.ini") +
    "です\n"
    "良好 発券システムの営業日は今日(240115)です\n"
    "良好 受付の数は1です\n"
    "良好 受付1「受付」の受付は処理済1件、未処理0件です\n"
    "良好 karvel.hnbを読めるのは、この利用者と管理者だけです\n"
    "良好 集計管理のディスクの空きは1048576MBです\n";
const char* const kToFolder =
    "良好 出力先のフォルダに書き込めます: out\n"
    "良好 今日の集計ファイルが届いています: 00345_240115.txt(2024/01/01 00:00)\n"
    "良好 出力先のディスクの空きは1048576MBです\n";
const char* const kToSite =
    "良好 サーバーの名前「ftp.example.com」のアドレス: 192.0.2.1(7ミリ秒)\n"
    "良好 ftp.example.comの21番に接続できました。サーバーの文: 220 ready\n"
    "良好 shopとしてログインできました(7ミリ秒)。サーバーの文: 331 who / 230 yes\n"
    "良好 一覧を取得できました(7ミリ秒)。サーバーの文: 220 ready / 331 who / 230 yes\n"
    "良好 フォルダ「branch」に入りました(7ミリ秒)\n"
    "良好 今日の集計ファイルが届いています: 00345_240115.txt(1970/01/01 00:00)\n"
    "良好 試験転送に成功しました: 送信○(7ミリ秒)。サーバーの文: 220 ready / 331 who / 230 yes、"
    "名前の変更○(7ミリ秒)。サーバーの文: 220 ready / 331 who / 230 yes、"
    "削除○(7ミリ秒)。サーバーの文: 220 ready / 331 who / 230 yes\n";
const char* const kEnd =
    "良好 起動すれば常駐する設定です\n"
    "良好 集計管理が動いています\n"
    "良好 サインインすると集計管理が起動します\n";
const char* const kAnswer = "この店舗の転送を妨げるものは見つかりませんでした。\n";

TEST(Check, TellsWhatItHasSeenOfAShopInOrder) {
  for (const bool site : {false, true}) {
    CheckedShop shop(site);
    shop.probe = site;
    shop.internet.replies = "220 ready\r\n331 who\r\n230 yes\r\n";
    const Report report = shop.check();
    EXPECT_EQ(report.text(), std::string(kStart) + "良好 保存先は" +
                                 (site ? "ﾕｰｻﾞｰ管理ｻｲﾄです\n" : "指定フォルダです\n") + kShop +
                                 (site ? kToSite : kToFolder) + kEnd +
                                 (site ? "良好 最後に届いた転送は2024/01/15 09:00:00です\n"
                                       : "良好 最後の転送は2024/01/15 09:00:00に行われました"
                                         "(届いたかは、ログでは分かりません)\n") +
                                 kAnswer);
    std::string meanings;
    for (const SettingShown& each : report.settings) {
      if (!each.meaning.empty()) meanings += each.key + ":" + each.meaning + " ";
    }
    EXPECT_EQ(meanings, std::string("FTP PSIV:Passive ﾓｰﾄﾞ FTP TIME:5分ごと FTP TYPE:") +
                            (site ? "ﾕｰｻﾞｰ管理ｻｲﾄ FTP CHKC:接続確認済み FTP CHKF:接続確認済み "
                                  : "指定フォルダ FTP CHKC:接続確認済み FTP CHKF:接続確認はまだ "));
    EXPECT_EQ(report.log.size(), 4U);
  }
}

void expectSpoken(const Fault& fault, bool site) {
  SCOPED_TRACE(fault.what);
  CheckedShop shop(site);
  fault.make(shop);
  const auto before = shop.files.files;
  const auto remote = shop.internet.folders;

  const Report report = shop.check();
  const auto speaks = [&](const Finding& each) {
    return each.mark == fault.mark && each.anchor == fault.anchor &&
           contains(each.found, fault.words);
  };
  EXPECT_TRUE(std::ranges::any_of(report.findings, speaks)) << report.text();
  EXPECT_EQ(report.hasTrouble(), fault.mark == kTrouble) << report.text();
  EXPECT_TRUE(shop.files.files == before);
  EXPECT_TRUE(shop.internet.folders == remote || contains(report.text(), "サイトに残ったもの"));
  EXPECT_EQ(shop.internet.openHandles, 0);
  for (const std::string& told : {report.text(), report.html()}) {
    EXPECT_EQ(told.find("sesame"), std::string::npos) << told;
  }
}

TEST(Check, EachFaultSpeaksAndNothingChanges) {
  for (const Fault& fault : kFaults) expectSpoken(fault, false);
  for (const Fault& fault : kSiteFaults) expectSpoken(fault, true);
}

TEST(Check, HidesThePasswordInAServersWordsOnly) {
  CheckedShop shop(true);
  const std::string cut = "12003/" + std::string(FtpForm::kErrorTextWidth - 10, 'x');
  shop.log({"Snd Start", "FTP:PutFile NG " + cut + "open", "Snd Exit"});
  for (const std::string password : {"00345", "open  it", "opening"}) {
    shop.setOwn("FTP PASS", password);
    shop.internet.replies = "220 " + password + " x";
    const std::string told = shop.check().text();
    EXPECT_TRUE(contains(told, "店舗ｺｰﾄﾞは00345です")) << told;
    EXPECT_TRUE(contains(told, "220 **** x")) << told;
    EXPECT_EQ(contains(told, cut + "****"), password != "00345") << told;
  }
}

}  // namespace
}  // namespace karvel
