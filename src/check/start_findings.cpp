#include "check/start_findings.h"

#include "check/quotation.h"
#include "text/strings.h"

namespace karvel {
namespace {

using Destination = FtpForm::Destination;

/// The conditions of a resident start, in the order in which the program looks.
void findResident(Shop& shop, Findings& findings) {
  if (shop.resident) {
    findings.good("resident", "起動すれば常駐する設定です");
    return;
  }
  std::string reason = "「接続確認」にまだ成功していない";
  if (!shop.files.exists(shop.settings.TicketIniPath)) {
    reason = "karvel.iniが見つからない";
  } else if (!shop.form.shopCodeValid()) {
    reason = "店舗ｺｰﾄﾞが登録されていない";
  } else if (shop.form.destination() == Destination::kNone) {
    reason = "保存先が選ばれていない";
  }
  findings.trouble("resident", "起動しても常駐しません: " + reason + "ためです",
                   "「接続設定」を開き、足りない設定をして「接続確認」を行います。");
}

void findProgram(Shop& shop, Findings& findings) {
  if (!shop.inspection.running(shop.folder)) {
    findings.trouble(
        "running", "この利用者では、このフォルダの集計管理が動いていません",
        "店舗で使う利用者で診断します。「接続設定」を開いて「OK」を押すと常駐します。");
    return;
  }
  findings.good("running", "集計管理が動いています");
  const std::string message = shop.inspection.waitingMessage(shop.folder);
  if (!message.empty()) {
    findings.trouble(
        "message-box",
        "集計管理がメッセージの「OK」を待っています: " + inOneLine(quoted(shop, message)),
        "内容を控えて「OK」を押します。その間は転送しません。");
  }
}

void findSignIn(Shop& shop, Findings& findings) {
  const auto starts = shop.inspection.startsAtSignIn(shop.folder);
  if (!starts) return;
  if (*starts) {
    findings.good("sign-in", "サインインすると集計管理が起動します");
  } else {
    findings.notice("sign-in", "サインインしても集計管理は起動しません",
                    "セットアップで「Windowsの起動時に開始」にチェックを付けます。");
  }
}

}  // namespace

void findStart(Shop& shop, Findings& findings) {
  findResident(shop, findings);
  findProgram(shop, findings);
  findSignIn(shop, findings);
}

}  // namespace karvel
