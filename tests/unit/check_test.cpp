#include <gtest/gtest.h>

#include "app/shop_check.h"
#include "fakes/fake_inspection.h"
#include "fakes/shop_world.h"
#include "text/code_page.h"
#include "text/path.h"

namespace karvel {
namespace {

constexpr const char* kPassword = "open<sesame>&";
constexpr const char* kOwnFile = "karvel.hnb";

/// A shop in good order, whose program runs.
struct CheckedShop : ShopWorld {
  FakeInspection system{files};
  bool probe = false;

  CheckedShop() {
    files.folders.insert("tmp");
    files.files[deskFile()].content = "1\t09:00:00\t09:05:00\t\t1\t\t\t0\t\t\t\r\n";
    files.files[outPath("00345_240115.txt")].content = "delivered";
    log({"Snd Start", "Ftp_ShopFold Exit", "HS-FTP:PutFile OK", "Snd Exit"});
  }

  static std::string deskFile() { return path(joinPath("temp", "240115_1.tmp")); }
  std::string& ownFile() { return files.files[path(kOwnFile)].content; }
  void log(const std::vector<std::string>& messages) {
    std::string& text = files.files[logPath()].content;
    for (const auto& each : messages) text += "2024/01/15 09:00:00\t" + each + "\r\n";
  }
  void onSite() {
    useOwnSite();
    setOwn("FTP PASS", kPassword);
    setOwn("FTP FOLD", "branch");
    internet.folders["/branch"] = {{"00345_240115.txt", "delivered"}};
    // A server that repeats what it is told.
    internet.replies = std::string("220 ready\r\n331 who\r\n230 welcome ") + kPassword + "\r\n";
  }
  Report check() { return checkShop(platform(), system, probe); }
};

struct Fault {
  const char* what;
  Mark mark;
  const char* anchor;  ///< of the finding that speaks
  std::function<void(CheckedShop&)> make;
};

void onSite(CheckedShop& shop, const std::function<void(CheckedShop&)>& change) {
  shop.onSite();
  change(shop);
}

/// A fault of the site, at the calls that begin with these words.
auto refused(const std::string& words, Internet::ErrorNumber number) {
  return [=](CheckedShop& shop) {
    shop.onSite();
    shop.internet.fault = [=](const std::string& call) {
      return call.starts_with(words) ? std::optional(FakeInternet::Failure{number, "550 no"})
                                     : std::nullopt;
    };
  };
}

using S = CheckedShop;
const std::vector<Fault> kFaults{
    {"saved as UTF-8", Mark::kTrouble, "settings-file",
     [](S& s) { s.ownFile() = fromCodePage932(s.ownFile()); }},
    {"a byte order mark", Mark::kTrouble, "settings-file",
     [](S& s) { s.ownFile().insert(0, "\xEF\xBB\xBF"); }},
    {"a second section", Mark::kTrouble, "settings-file",
     [](S& s) { s.ownFile() += "[ftp infomation]\r\n"; }},
    {"a second key", Mark::kNotice, "settings-file", [](S& s) { s.ownFile() += "ftp code=2\r\n"; }},
    {"stray bytes", Mark::kNotice, "settings-file",
     [](S& s) { s.ownFile() += "\x81\x01\xFF\r\n"; }},
    {"no settings", Mark::kTrouble, "settings-file",
     [](S& s) { s.files.files.erase(S::path(kOwnFile)); }},
    {"another code page", Mark::kNotice, "code-page", [](S& s) { s.system.page = 1252; }},
    {"a code page of double bytes", Mark::kNotice, "server-names",
     [](S& s) { onSite(s, [](S& t) { t.system.page = 936; }); }},
    {"an unstorable folder", Mark::kTrouble, "code-page",
     [](S& s) { s.setOwn("OUT FOLD", "o?t"); }},
    {"no shop code", Mark::kTrouble, "shop-code", [](S& s) { s.setOwn("FTP CODE", "0"); }},
    {"the first group code", Mark::kNotice, "identifier",
     [](S& s) { s.setOwn("GRUP CODE", "9999"); }},
    {"no destination", Mark::kTrouble, "destination", [](S& s) { s.setOwn("FTP TYPE", "3"); }},
    {"by hand", Mark::kNotice, "destination", [](S& s) { s.setOwn("FTP TIME", "0"); }},
    {"no account", Mark::kTrouble, "account",
     [](S& s) { onSite(s, [](S& t) { t.setOwn("FTP NAME", ""); }); }},
    {"no ticket application", Mark::kTrouble, "ticket-app",
     [](S& s) { s.setOwn("HST FOLD", "elsewhere"); }},
    {"yesterday", Mark::kNotice, "today",
     [](S& s) { s.setTicket("USER INFOMATION", "TODAY", "240114"); }},
    {"an impossible day", Mark::kTrouble, "today",
     [](S& s) { s.setTicket("USER INFOMATION", "TODAY", "24/1/15"); }},
    {"too many desks", Mark::kNotice, "desks",
     [](S& s) { s.setTicket("TASHIN INFOMATION", "SHINSATSU", "9"); }},
    {"no reception file", Mark::kNotice, "reception-files",
     [](S& s) { s.files.files.erase(S::deskFile()); }},
    {"records of ten fields", Mark::kNotice, "reception-files",
     [](S& s) { s.files.files[S::deskFile()].content = "1\t2\t3\t4\t5\t6\t7\t8\t9\t10\r\n"; }},
    {"a text", Mark::kNotice, "txt-files", [](S& s) { s.files.files[S::path("memo.TXT")]; }},
    {"a leftover", Mark::kNotice, "leftovers",
     [](S& s) { s.files.files[S::path("karvel.hnb.unsaved-a")]; }},
    {"a full disk", Mark::kTrouble, "disk", [](S& s) { s.system.room = 1000; }},
    {"an open file", Mark::kNotice, "permissions", [](S& s) { s.system.readable = true; }},
    {"a closed program folder", Mark::kTrouble, "output-folder",
     [](S& s) { s.system.folderWritable = false; }},
    {"no output folder", Mark::kTrouble, "output-folder",
     [](S& s) { s.files.folders.erase(S::kOutFolder); }},
    {"a closed output folder", Mark::kTrouble, "output-folder",
     [](S& s) { s.files.unwritable.insert(S::outPath("karvel-check.tmp")); }},
    {"no table yet", Mark::kNotice, "old-table",
     [](S& s) { s.files.files.erase(S::outPath("00345_240115.txt")); }},
    {"never tested", Mark::kTrouble, "resident", [](S& s) { s.setOwn("FTP CHKC", "0"); }},
    {"not running", Mark::kTrouble, "running", [](S& s) { s.system.runs = false; }},
    {"a message", Mark::kTrouble, "message-box", [](S& s) { s.system.message = "?"; }},
    {"no sign-in", Mark::kNotice, "sign-in", [](S& s) { s.system.atSignIn = false; }},
    {"failures", Mark::kNotice, "log",
     [](S& s) { onSite(s, [](S& t) {
                  t.log({"Snd Start", "Snd Exit"});
                }); }},
    {"no such host", Mark::kTrouble, "name",
     [](S& s) { onSite(s, [](S& t) { t.system.found.clear(); }); }},
    {"no way to the host", Mark::kTrouble, "connect",
     [](S& s) {
       refused("connect", Internet::kErrorCannotConnect)(s);
       s.internet.replies.clear();
     }},
    {"a wrong password", Mark::kTrouble, "login", refused("connect", Internet::kErrorLoginFailure)},
    {"no data connection", Mark::kTrouble, "data-connection",
     refused("list", Internet::kErrorTimeout)},
    {"an inner address", Mark::kNotice, "passive",
     [](S& s) { onSite(s, [](S& t) { t.internet.replies += "227 Passive (10,0,0,1,4,5)\r\n"; }); }},
    {"no such folder", Mark::kTrouble, "target-folder",
     [](S& s) { onSite(s, [](S& t) { t.setOwn("FTP FOLD", "nowhere"); }); }},
    {"only a longer name", Mark::kTrouble, "target-folder",
     [](S& s) { onSite(s, [](S& t) { t.setOwn("FTP FOLD", "bran"); }); }},
    {"an unfinished upload", Mark::kNotice, "temporary-file",
     [](S& s) { onSite(s, [](S& t) { t.internet.folders["/branch"]["0.xxx"]; }); }},
    {"encryption", Mark::kNotice, "tls",
     [](S& s) { onSite(s, [](S& t) { t.internet.offered = "211 AUTH TLS"; }); }},
    {"no renaming", Mark::kTrouble, "probe",
     [](S& s) {
       refused("rename", Internet::kErrorExtended)(s);
       s.probe = true;
     }},
};

bool speaks(const Report& report, Mark mark, std::string_view anchor) {
  for (const Finding& each : report.findings) {
    if (each.mark == mark && each.anchor == anchor) return true;
  }
  return false;
}

TEST(Check, FindsNothingInAShopInOrder) {
  for (const bool site : {false, true}) {
    CheckedShop shop;
    if (site) shop.onSite();
    shop.probe = site;
    const Report report = shop.check();
    for (const Finding& each : report.findings) {
      EXPECT_EQ(each.mark, Mark::kGood) << each.anchor << " " << each.found;
    }
    EXPECT_TRUE(report.text().ends_with("妨げるものは見つかりませんでした。\n"));
  }
}

TEST(Check, EachFaultSpeaksAndNothingChanges) {
  for (const Fault& fault : kFaults) {
    SCOPED_TRACE(fault.what);
    CheckedShop shop;
    fault.make(shop);
    std::map<std::string, std::string> before;
    for (const auto& [path, file] : shop.files.files) before[path] = file.content;
    const auto remote = shop.internet.folders;

    const Report report = shop.check();
    EXPECT_TRUE(speaks(report, fault.mark, fault.anchor)) << report.text();
    EXPECT_EQ(report.hasTrouble(), fault.mark == Mark::kTrouble) << report.text();

    std::map<std::string, std::string> after;
    for (const auto& [path, file] : shop.files.files) after[path] = file.content;
    EXPECT_EQ(after, before);
    EXPECT_TRUE(shop.probe || shop.internet.folders == remote);
    EXPECT_EQ(shop.internet.openHandles, 0);
    for (const std::string& told : {report.text(), report.html()}) {
      EXPECT_EQ(told.find("sesame"), std::string::npos) << told;
    }
  }
}

}  // namespace
}  // namespace karvel
