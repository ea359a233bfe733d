#include "check/folder_findings.h"

#include "send/folder_delivery.h"
#include "text/path.h"
#include "text/strings.h"

namespace karvel {
namespace {

using Field = FtpForm::Field;

constexpr std::uint64_t kMebibyte = 1024 * 1024;
constexpr std::uint64_t kScarce = 100 * kMebibyte;
constexpr std::uint64_t kTooLittle = 5 * kMebibyte;
constexpr const char* kTrialName = "karvel-check.tmp";
constexpr const char* kUnsavedSettings = "karvel.hnb.unsaved-";

void findRoom(Shop& shop, const std::string& folder, const std::string& what, Findings& findings) {
  const auto bytes = shop.inspection.freeBytes(folder);
  if (!bytes) return;
  const std::string room =
      what + "のディスクの空きは" + std::to_string(*bytes / kMebibyte) + "MBです";
  const std::string advice = "不要なファイルを削除します。";
  if (*bytes < kTooLittle) {
    findings.trouble("disk", room, advice);
  } else if (*bytes < kScarce) {
    findings.notice("disk", room, advice);
  } else {
    findings.good("disk", room);
  }
}

bool isReadOnly(Shop& shop, const std::string& path) {
  const auto attributes = shop.files.attributes(path);
  return attributes && (*attributes & Files::kReadOnly) != 0;
}

/// What stands where a run makes or puts the table, and cannot be replaced.
void findBlockedTable(Shop& shop, const std::string& folder, Findings& findings) {
  const std::string name =
      shop.form.text(Field::kShopCode) + "_" + shop.settings.read(ticket::kBusinessDay) + ".txt";
  const std::string path = joinPath(folder, name);
  const auto attributes = shop.files.attributes(path).value_or(Files::kNormal);
  if ((attributes & Files::kDirectory) != 0) {
    findings.trouble("output-folder", "集計ファイルと同じ名前のフォルダがあります: " + path,
                     "フォルダを移すか、名前を変えます。");
  } else if ((attributes & Files::kReadOnly) != 0) {
    findings.trouble("output-folder", "集計ファイルが読み取り専用です: " + path,
                     "読み取り専用を解除します。");
  }
}

void findStrayFiles(Shop& shop, Findings& findings) {
  std::string texts;
  std::string leftovers;
  for (const Inspection::Entry& entry : shop.inspection.entries(shop.folder)) {
    const std::string lower = asciiLower(entry.name);
    if (entry.folder) continue;
    const bool stays = isReadOnly(shop, joinPath(shop.folder, entry.name));
    if (lower.ends_with(".txt") && !stays) texts += (texts.empty() ? "" : "、") + entry.name;
    if (lower.starts_with(kUnsavedSettings) || lower.ends_with(".inf")) {
      leftovers += (leftovers.empty() ? "" : "、") + entry.name;
    }
  }
  if (!texts.empty()) {
    findings.notice("txt-files", "次の起動か終了のときに削除されるファイルがあります: " + texts,
                    "必要なら、今すぐ別のフォルダに移します。");
  }
  if (!leftovers.empty()) {
    findings.notice("leftovers", "作りかけのまま残ったファイルがあります: " + leftovers,
                    "集計管理が動いていないときに削除します。");
  }
}

}  // namespace

void findProgramFolder(Shop& shop, Findings& findings) {
  findStrayFiles(shop, findings);
  findBlockedTable(shop, shop.folder, findings);
  if (!shop.inspection.writable(shop.folder)) {
    findings.trouble("output-folder", "集計管理のフォルダに書き込めません: " + shop.folder,
                     "店舗で使う利用者が書き込めるようにします。");
  } else if (isReadOnly(shop, shop.settings.OwnIniPath)) {
    findings.notice("permissions", "karvel.hnbが読み取り専用です", "読み取り専用を解除します。");
  }
  const auto open = shop.inspection.readableByOthers(shop.settings.OwnIniPath);
  if (open && *open) {
    findings.notice("permissions", "ほかの利用者が、パスワードを含むkarvel.hnbを読めます",
                    "店舗で使う利用者だけが開けるようにします。");
  } else if (open) {
    findings.good("permissions", "karvel.hnbを読めるのは、この利用者と管理者だけです");
  }
  findRoom(shop, shop.folder, "集計管理", findings);
}

void tryWithFile(Shop& shop, std::string_view anchor, Findings& findings, const Trial& trial) {
  const std::string folder = shop.inspection.temporaryFolder();
  const std::string path = joinPath(folder, kTrialName);
  const bool made = shop.files.write(path, "karvel-check\r\n");
  if (!made || !trial(folder + kSeparator, kTrialName)) {
    findings.notice(anchor, "一時フォルダを使えないため、書き込みを試せませんでした: " + folder,
                    "一時フォルダに書き込めるようにして、もう一度診断します。");
  }
  if (made) shop.files.remove(path);
}

void findOutputFolder(Shop& shop, Findings& findings) {
  if (shop.form.destination() != FtpForm::Destination::kOutputFolder) return;
  const std::string folder(trimmed(shop.form.text(Field::kOutputFolder)));
  if (folder.empty()) return;  // said with the settings
  const auto attributes = shop.files.attributes(folder);
  if (!attributes || (*attributes & Files::kDirectory) == 0) {
    findings.trouble("output-folder", "出力先のフォルダがありません: " + folder,
                     "フォルダを作るか、「接続設定」で選び直します。");
    return;
  }

  tryWithFile(
      shop, "output-folder", findings, [&](const std::string& from, const std::string& name) {
        FolderDelivery delivery(shop.form, shop.files, shop.clock);
        const bool delivered = delivery.putFile(from, name);
        // Where both are the same folder, putting it there has removed it.
        if (!delivered && !shop.files.exists(from + name)) return false;
        // A link or a path with "." in it may lead here: what comes and goes with the file tells.
        const std::string here = joinPath(shop.folder, name);
        const bool seenHere = shop.files.exists(here);
        delivery.removeFile(name);
        if (!delivered) {
          findings.trouble("output-folder", "出力先のフォルダに書き込めません: " + folder,
                           "店舗で使う利用者がファイルを作成し、削除できるようにします。");
        } else if (shop.files.exists(joinPath(folder, name))) {
          findings.trouble("output-folder", "出力先のフォルダのファイルを削除できません: " + folder,
                           "店舗で使う利用者がファイルを削除できるようにします。");
        } else if (seenHere && !shop.files.exists(here)) {
          findings.trouble(
              "output-folder", "出力先が集計管理のフォルダと同じです: " + folder,
              "「接続設定」で別のフォルダを選びます。転送のたびに削除され、届きません。");
        } else {
          findings.good("output-folder", "出力先のフォルダに書き込めます: " + folder);
        }
        return true;
      });
  findBlockedTable(shop, folder, findings);

  NewestTable newest(shop);
  for (const Inspection::Entry& entry : shop.inspection.entries(folder)) {
    if (!entry.folder) newest.add(entry.name, formatDateMinute(entry.modified));
  }
  newest.report(findings);
  findRoom(shop, folder, "出力先", findings);
}

void NewestTable::add(const std::string& name, const std::string& date) {
  const bool table =
      name.starts_with(shop_.form.text(Field::kShopCode) + "_") && name.ends_with(".txt");
  if (!table || date <= date_) return;
  name_ = name;
  date_ = date;
}

void NewestTable::report(Findings& findings) const {
  const DateTime now = shop_.clock.now();
  // A server's clock may be in another time zone, where the name tells.
  const bool today = date_ >= formatDate(now) ||
                     contains(name_, "_" + formatDayKey(now.year, now.month, now.day) + ".");
  if (name_.empty()) {
    findings.notice("old-table", "届け先に、この店舗の集計ファイルがまだありません",
                    "ログで、転送が行われているかを確かめます。");
  } else if (!today) {
    findings.notice("old-table", "届け先の集計ファイルは" + date_ + "のものです: " + name_,
                    "それ以来届いていません。ログで理由を確かめます。");
  } else {
    findings.good("old-table", "今日の集計ファイルが届いています: " + name_ + "(" + date_ + ")");
  }
}

}  // namespace karvel
