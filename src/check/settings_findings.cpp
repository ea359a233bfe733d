#include "check/settings_findings.h"

#include <algorithm>
#include <array>

#include "send/send_interval.h"
#include "send/shop_info.h"
#include "text/code_page.h"
#include "text/ini_text.h"
#include "text/numeric_value.h"
#include "text/server_text.h"
#include "text/strings.h"

namespace karvel {
namespace {

using Destination = FtpForm::Destination;
using Field = FtpForm::Field;

constexpr unsigned kJapanese = 932;
constexpr unsigned kUtf8 = 65001;
constexpr std::size_t kLongestValue = 255;  ///< bytes
constexpr std::array kDestinationNames{"指定フォルダ", "ﾕｰｻﾞｰ管理ｻｲﾄ", "るりはなリンク管理ｻｲﾄ",
                                       "利用しない"};
constexpr std::array kIntervalNames{"手動転送のみ", "5分ごと", "15分ごと", "30分ごと", "60分ごと"};

const char* nameOf(FtpForm::Destination::Index destination) {
  return kDestinationNames.at(static_cast<std::size_t>(destination));
}

std::size_t occurrences(std::string_view text, std::string_view part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

/// Bytes that stand for no character are read as middle dots.
bool hasStrayBytes(const std::string& bytes) {
  return occurrences(fromCodePage932(bytes), "・") > occurrences(bytes, "\x81\x45");
}

bool isStorable(const std::string& text) {
  return fromCodePage932(toCodePage932(text)) == text;
}

/// What a person can have done to the file with an editor: sections and keys twice, lines too long.
void findSlips(const std::string& bytes, Findings& findings) {
  std::size_t sections = 0;
  bool tooLong = false;
  std::array<int, own::kInitialKeys.size()> keys{};
  eachIniLine(bytes, [&](const IniLine& line) {
    if (asciiLower(line.section) != asciiLower(section::kFtp)) return;
    sections += line.key.empty() ? 1 : 0;
    if (sections > 1) return;
    tooLong = tooLong || line.value.size() > kLongestValue;
    for (std::size_t i = 0; i < keys.size(); ++i) {
      keys.at(i) += asciiLower(line.key) == asciiLower(own::kInitialKeys.at(i).name) ? 1 : 0;
    }
  });

  if (sections != 1) {
    findings.trouble("settings-file",
                     "karvel.hnbに[FTP INFOMATION]が" + std::to_string(sections) + "個あります",
                     "1つだけにします。2つ目からは読まれません。");
  }
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (keys.at(i) <= 1) continue;
    findings.notice(
        "settings-file",
        "karvel.hnbに「" + std::string(own::kInitialKeys.at(i).name) + "」が2行以上あります",
        "1行だけにします。はじめの行だけが読まれます。");
  }
  if (tooLong) {
    findings.notice("settings-file", "karvel.hnbに255バイトより長い値があります",
                    "短くします。255バイトより後は読まれません。");
  }
}

void findFile(Shop& shop, Findings& findings) {
  std::string bytes;
  const std::string& path = shop.settings.OwnIniPath;
  if (!shop.files.exists(path)) {
    findings.trouble("settings-file", "設定ファイル(karvel.hnb)がありません",
                     "「接続設定」を開いて設定します。");
    return;
  }
  if (!shop.files.readPieces(path, [&](std::string_view piece) { bytes += piece; })) {
    findings.trouble("settings-file", "設定ファイル(karvel.hnb)を読めません",
                     "ファイルの権限を確かめます。");
    return;
  }
  const std::size_t before = findings.all.size();
  if (bytes.starts_with("\xEF\xBB\xBF") || bytes.starts_with("\xFF\xFE") || isServerUtf8(bytes)) {
    findings.trouble("settings-file", "karvel.hnbの文字コードがShift-JISではありません",
                     "Shift-JISで保存し直します(コードページが932なら、メモ帳の「ANSI」)。");
  } else if (hasStrayBytes(bytes)) {
    findings.notice("settings-file", "karvel.hnbに、Shift-JISの文字ではないバイトがあります",
                    "文字が化けている値を設定し直します。");
  }
  findSlips(bytes, findings);
  if (findings.all.size() == before) {
    findings.good("settings-file", "設定ファイル(karvel.hnb)は正しく読めます");
  }
}

/// The system's code pages in which a character is one byte: whatever goes through them survives.
bool hasSingleBytes(unsigned codePage) {
  return codePage == 874 || (codePage >= 1250 && codePage <= 1258);
}

/// The program's own texts do not depend on it.
void findSystemCodePage(Shop& shop, unsigned codePage, Findings& findings) {
  const std::string number = std::to_string(codePage);
  findings.notice("code-page",
                  "システムのコードページが" + number +
                      "です(日本語は932)。発券システムやメモ帳では日本語が化けることがあります",
                  codePage == kUtf8 ? "「Unicode UTF-8を使用」のチェックを外します。"
                                    : "Unicode対応ではないプログラムの言語を日本語にします。");
  if (shop.form.destination() == Destination::kUserSite && !hasSingleBytes(codePage)) {
    findings.notice("server-names",
                    "コードページ" + number + "では、サイトの日本語の名前が化けることがあります",
                    "コードページを932にするか、名前を半角の英数字にします。");
  }
}

void findCodePage(Shop& shop, Findings& findings) {
  const auto codePage = shop.inspection.codePage();
  if (codePage && *codePage != kJapanese) findSystemCodePage(shop, *codePage, findings);
  if (!isStorable(shop.folder)) {
    findings.notice("code-page",
                    "集計管理のフォルダの名前に、Shift-JISにない文字があります: " + shop.folder,
                    "フォルダの名前を変えます。");
  }
  if (contains(shop.form.text(Field::kOutputFolder), "?")) {
    findings.trouble("code-page",
                     "出力先の名前に「?」があります(Shift-JISにない文字は保存できません)",
                     "フォルダの名前を変え、「接続設定」で選び直します。");
  }
}

void findShop(Shop& shop, Findings& findings) {
  const std::string& code = shop.form.text(Field::kShopCode);
  if (shop.form.shopCodeValid()) {
    findings.good("shop-code", "店舗ｺｰﾄﾞは" + code + "です");
  } else {
    findings.trouble(
        "shop-code",
        code.empty() ? "店舗ｺｰﾄﾞがありません" : "店舗ｺｰﾄﾞ「" + code + "」は番号ではありません",
        "「ｸﾞﾙｰﾌﾟ登録」で1から99999までの番号を登録します。");
  }
  const std::string identifier =
      shop.settings.read(own::kGroupCode) + shop.settings.read(own::kShopCode);
  if (ShopInfo::isValidIdentifier(identifier)) {
    findings.good("identifier", "店舗情報の番号は" + identifier + "です");
  } else {
    findings.notice(
        "identifier",
        "店舗情報の番号「" + identifier + "」が7桁の番号ではないため、店舗情報ファイルは届きません",
        "「ｸﾞﾙｰﾌﾟ登録」で登録し直します。");
  }
}

void findDestination(Shop& shop, Findings& findings) {
  const auto destination = shop.form.destination();
  const std::string name = nameOf(destination);
  if (destination == Destination::kNone) {
    const bool wanted = numericValue(shop.settings.read(own::kDestination)) ==
                        static_cast<int>(Destination::kServiceSite);
    findings.trouble(
        "destination",
        wanted ? "保存先の管理ｻｲﾄの設定が発券システムにありません" : "保存先が「利用しない」です",
        "「接続設定」で保存先を選び、「接続確認」を行います。");
    return;
  }
  findings.good("destination", "保存先は" + name + "です");

  if (!shop.form.destinationComplete()) {
    const bool folder = destination == Destination::kOutputFolder;
    findings.trouble(
        folder ? "output-folder" : "account",
        folder ? "出力先のフォルダが設定されていません" : "FTPのアカウントの設定が足りません",
        folder ? "「接続設定」でフォルダを選びます。"
               : "ｻｲﾄ、ｱｶｳﾝﾄ名、ﾊﾟｽﾜｰﾄﾞをすべて設定します。");
  }

  const SendInterval& interval = SendInterval::of(shop.settings.read(own::kInterval));
  const std::string text = kIntervalNames.at(static_cast<std::size_t>(interval.option));
  if (interval.unattended()) {
    findings.good("destination", "転送間隔は" + text + "です");
  } else {
    findings.notice("destination", "転送間隔は" + text + "です。自動では転送しません",
                    "自動で転送するときは「接続設定」で間隔を選びます。");
  }
}

std::string meaningOf(const OwnKey& key, Shop& shop) {
  const std::string value = shop.settings.read(key);
  if (key.name == own::kDestination.name) return nameOf(shop.form.destination());
  if (key.name == own::kInterval.name) {
    return kIntervalNames.at(static_cast<std::size_t>(SendInterval::of(value).option));
  }
  if (key.name == own::kPassive.name) {
    return numericValue(value) != 0 ? "Passive ﾓｰﾄﾞ" : "Activeモード";
  }
  if (key.name == own::kFolderReached.name || key.name == own::kSiteReached.name) {
    return numericValue(value) == 1 ? "接続確認済み" : "接続確認はまだ";
  }
  return {};
}

}  // namespace

void findSettings(Shop& shop, Findings& findings) {
  findFile(shop, findings);
  findCodePage(shop, findings);
  findShop(shop, findings);
  findDestination(shop, findings);
}

std::vector<SettingShown> shownSettings(Shop& shop) {
  std::vector<SettingShown> shown;
  for (const OwnKey& key : own::kInitialKeys) {
    std::string value = shop.settings.read(key);
    if (key.name == own::kPassword.name) value = value.empty() ? "(なし)" : "(あり)";
    shown.push_back({std::string(key.name), value, meaningOf(key, shop)});
  }
  for (const OwnKey& key : {own::kPreviousShop, own::kExitRequest, own::kPanelRequest}) {
    shown.push_back({std::string(key.name), shop.settings.read(key), ""});
  }
  return shown;
}

}  // namespace karvel
