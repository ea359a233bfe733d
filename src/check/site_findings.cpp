#include "check/site_findings.h"

#include <algorithm>
#include <array>

#include "check/folder_findings.h"
#include "check/quotation.h"
#include "ftp/site_session.h"
#include "text/code_page.h"
#include "text/path.h"
#include "text/server_text.h"
#include "text/strings.h"

namespace karvel {
namespace {

using Call = WatchedInternet::Call;
using Step = WatchedInternet::Step;

std::string timeText(std::chrono::milliseconds time) {
  return "(" + std::to_string(time.count()) + "ミリ秒)";
}

std::string words(Shop& shop, const std::string& replies) {
  const std::string text = quoted(shop, textOfServer(quoted(shop, replies)));
  std::string line(trimmed(inOneLine(text)));
  for (auto gap = line.find("  "); gap != std::string::npos; gap = line.find("  ")) {
    line.replace(gap, 2, " / ");
  }
  if (line.ends_with('.')) line.pop_back();
  return line.empty() ? "" : "。サーバーの文: " + line;
}

std::string account(const std::optional<std::string>& bytes) {
  return fromCodePage932(bytes.value_or(""));
}

std::string reason(Shop& shop, const Call& call) {
  std::string text(trimmed(quoted(shop, shop.form.LastFtpError)));
  if (text.empty()) text = std::to_string(call.error);
  return text + timeText(call.time) + words(shop, call.replies);
}

bool mentionsEncryption(const std::string& text) {
  const std::string lower = asciiLower(text);
  return contains(lower, "tls") || contains(lower, "ssl");
}

void findEncryption(Shop& shop, bool loggedIn, const std::string& said, Findings& findings) {
  const bool offered = shop.internet.offered && mentionsEncryption(*shop.internet.offered);
  if (!offered && (loggedIn || !mentionsEncryption(said))) return;
  findings.notice("tls",
                  loggedIn ? "サーバーは暗号化(AUTH TLS)に対応していますが、集計管理は使いません"
                           : "サーバーは暗号化(TLS)を求めているようです",
                  "暗号化しないFTPを続けてよいか、サイトの管理者に確かめます。");
}

void findFailedLogin(Shop& shop, const Call& call, Findings& findings) {
  const std::string host = account(shop.internet.account.host);
  const std::string port = std::to_string(shop.internet.account.port);
  const bool answered = !call.replies.empty();
  if (call.error == Internet::kErrorLoginFailure || answered) {
    findings.trouble("login", host + "にログインできません: " + reason(shop, call),
                     "「ｱｶｳﾝﾄ名」と「ﾊﾟｽﾜｰﾄﾞ」を入力し直します。");
  } else {
    findings.trouble("connect", host + "の" + port + "番に接続できません: " + reason(shop, call),
                     "「ｻｲﾄ」とﾎﾟｰﾄ番号を確かめます。合っていれば、回線かファイアウォールです。");
  }
  findEncryption(shop, false, call.replies, findings);
}

/// True when the session has been opened.
bool findConnection(Shop& shop, Findings& findings) {
  WatchedInternet& internet = shop.internet;
  if (internet.calls.empty()) {
    findings.trouble("account", "FTPのアカウントの設定が足りません",
                     "ｻｲﾄ、ｱｶｳﾝﾄ名、ﾊﾟｽﾜｰﾄﾞをすべて設定します。");
    return false;
  }
  const std::string host = account(internet.account.host);
  if (internet.addresses.empty()) {
    findings.trouble(
        "name",
        "サーバーの名前「" + host + "」のアドレスが分かりません" + timeText(internet.lookupTime),
        "「ｻｲﾄ」の書き間違いと、回線を確かめます。");
    return false;
  }
  std::string addresses;
  for (const std::string& each : internet.addresses) addresses += " " + each;
  findings.good("name", "サーバーの名前「" + host + "」のアドレス:" + addresses +
                            timeText(internet.lookupTime));

  const Call& login = internet.calls.front();
  if (login.error != 0) {
    findFailedLogin(shop, login, findings);
    return false;
  }
  // Not every library keeps the greeting.
  const bool greeted = login.replies.starts_with("220");
  const auto greetingEnd =
      greeted ? std::min(login.replies.find("\r\n331 "), login.replies.size()) : 0;
  const std::string port = std::to_string(internet.account.port);
  findings.good("connect", host + "の" + port + "番に接続できました" +
                               words(shop, login.replies.substr(0, greetingEnd)));
  findings.good("login", account(internet.account.user) + "としてログインできました" +
                             timeText(login.time) + words(shop, login.replies.substr(greetingEnd)));
  findEncryption(shop, true, "", findings);
  return true;
}

/// The address in a reply to PASV, "227 ... (h1,h2,h3,h4,p1,p2)"; empty when there is none.
std::string passiveAddress(const std::string& replies) {
  const auto reply = replies.find("227 ");
  const auto begin = replies.find('(', reply);
  if (reply == std::string::npos || begin == std::string::npos) return {};
  std::string address;
  int commas = 0;
  for (const char c : std::string_view(replies).substr(begin + 1)) {
    commas += c == ',' ? 1 : 0;
    if (commas == 4) return address;
    address += c == ',' ? '.' : c;
  }
  return {};
}

/// True when the first listing has come.
bool findListing(Shop& shop, Findings& findings) {
  const auto& calls = shop.internet.calls;
  const auto list = std::find_if(calls.begin(), calls.end(),
                                 [](const Call& call) { return call.step == Step::kList; });
  if (list == calls.end()) return false;
  const std::string passive = passiveAddress(list->replies);
  const auto& own = shop.internet.addresses;
  if (!passive.empty() && std::find(own.begin(), own.end(), passive) == own.end()) {
    findings.notice(
        "passive",
        "サーバーがPassiveモードで知らせたアドレス" + passive + "は、サーバーのアドレスと違います",
        "サイトの管理者に、外から見えるアドレスを知らせるよう依頼します。");
  }
  if (list->error != 0) {
    findings.trouble("data-connection", "一覧を取得できません: " + reason(shop, *list),
                     "データ接続を止めているファイアウォールを確かめます。");
    return false;
  }
  findings.good("data-connection",
                "一覧を取得できました" + timeText(list->time) + words(shop, list->replies));
  return true;
}

std::string nameEncoding(const std::vector<std::string>& names) {
  const auto isWritten = [](const std::string& name) {
    return std::any_of(name.begin(), name.end(), [](char c) { return (c & 0x80) != 0; });
  };
  if (std::none_of(names.begin(), names.end(), isWritten)) return {};
  return std::any_of(names.begin(), names.end(), isServerUtf8) ? "UTF-8" : "Shift-JIS";
}

/// True when the session stands in the folder that the settings name.
bool findFolder(Shop& shop, bool open, Findings& findings) {
  bool entered = true;
  // Where a level is not entered, the next is looked for in the folder above it.
  const std::string effect = open ? "。ファイルは1つ上のフォルダに届きます" : "";
  for (const Call& call : shop.internet.calls) {
    if (call.step != Step::kFolder) continue;
    const std::string name = textOfServer(call.name);
    if (call.error == 0) {
      findings.good("target-folder", "フォルダ「" + name + "」に入りました" + timeText(call.time));
      continue;
    }
    entered = false;
    std::string found = "フォルダ「" + name;
    found += call.listed ? "」はありますが、入れません"
                         : "」はなく、名前がこれで始まるフォルダだけがあります";
    found += effect + timeText(call.time) + words(shop, call.replies);
    findings.trouble("target-folder", found,
                     call.listed ? "このアカウントで入れるよう、サイトの管理者に依頼します。"
                                 : "サイトにフォルダを作るか、設定の名前を直します。");
  }
  const std::string wanted(trimmed(shop.form.text(FtpForm::Field::kSiteFolder)));
  if (!open && entered) {
    findings.trouble("target-folder", "フォルダ「" + wanted + "」がサイトにありません",
                     "「ｻｲﾄ･ﾌｫﾙﾀﾞ」の道順と、大文字と小文字を確かめます。");
  }
  const std::string encoding = nameEncoding(shop.internet.names);
  if (!encoding.empty()) {
    findings.good("server-names", "サーバーは日本語の名前を" + encoding + "で書いています");
  }
  return open && entered;
}

/// Files of the target folder, from the lines of the listing: "F name", TAB, size, TAB, date.
void findRemoteFiles(Shop& shop, Findings& findings) {
  NewestTable newest(shop);
  std::string leftovers;
  for (const std::string& line : shop.form.lstFiles.items()) {
    const auto nameEnd = line.find('\t');
    const auto date = line.rfind('\t');
    if (!line.starts_with("F ") || nameEnd == date) continue;
    const std::string name = line.substr(2, nameEnd - 2);
    newest.add(name, line.substr(date + 1));
    if (name.ends_with(".xxx")) leftovers += (leftovers.empty() ? "" : "、") + name;
  }
  if (!leftovers.empty()) {
    findings.notice("temporary-file", "途切れた転送のファイルがサイトに残っています: " + leftovers,
                    "今日の分は次の転送で上書きされます。過去の分は削除してかまいません。");
  }
  newest.report(findings);
}

/// Deletes a trial's files from the site; what cannot be told to be gone, as the end of a sentence.
std::string leftOnSite(Shop& shop, SiteSession& session, const std::string& name) {
  const std::array names{name, name.substr(0, name.find('.')) + ".xxx"};
  session.Ftp_ListFiles();
  for (const std::string& each : names) session.Ftp_DeleteListed(each);
  session.Ftp_ListFiles();
  if (shop.internet.calls.back().error != 0) return "。サイトに残ったかどうかは分かりません";
  // A server may have said that it has deleted what is still there.
  std::string left;
  for (const std::string& line : shop.form.lstFiles.items()) {
    for (const std::string& each : names) {
      if (line.starts_with("F " + each + "\t")) left += (left.empty() ? "" : "、") + each;
    }
  }
  return left.empty() ? left : "。サイトに残ったもの: " + left;
}

void probe(Shop& shop, SiteSession& session, const std::string& folder, const std::string& name,
           Findings& findings) {
  const std::size_t before = shop.internet.calls.size();
  const bool sent = session.Ftp_PutFile(folder, name);
  const std::string left = leftOnSite(shop, session, name);

  std::string steps;
  bool deleted = false;
  for (std::size_t i = before; i < shop.internet.calls.size(); ++i) {
    const Call& call = shop.internet.calls[i];
    const bool failed = call.error != 0;
    if (call.step == Step::kList) continue;
    if (!steps.empty()) steps += "、";
    if (call.step == Step::kPut) steps += failed ? "送信×" : "送信○";
    if (call.step == Step::kRename) steps += failed ? "名前の変更×" : "名前の変更○";
    if (call.step == Step::kDelete) steps += failed ? "削除×" : "削除○";
    deleted = deleted || (call.step == Step::kDelete && !failed);
    steps += timeText(call.time) + words(shop, call.replies);
  }
  if (sent && deleted && left.empty()) {
    findings.good("probe", "試験転送に成功しました: " + steps);
  } else {
    findings.trouble("probe", "試験転送に失敗しました: " + steps + left,
                     "サイトで、一覧、書き込み、名前の変更、削除を許可するよう依頼します。");
  }
}

}  // namespace

void findSite(Shop& shop, Findings& findings) {
  const auto destination = shop.form.destination();
  if (destination != FtpForm::Destination::kUserSite &&
      destination != FtpForm::Destination::kServiceSite) {
    return;
  }
  shop.form.LastFtpError.clear();
  SiteSession session(
      {shop.form, shop.internet, shop.settings, shop.unchanging, shop.log, shop.folder});
  const bool open = session.Ftp_Open();
  if (!findConnection(shop, findings)) return;
  if (!findListing(shop, findings)) return;
  const bool there = findFolder(shop, open, findings);
  if (open) findRemoteFiles(shop, findings);
  if (!there || !shop.probe) return;
  tryWithFile(shop, "probe", findings, [&](const std::string& folder, const std::string& name) {
    probe(shop, session, folder, name, findings);
    return true;
  });
}

}  // namespace karvel
