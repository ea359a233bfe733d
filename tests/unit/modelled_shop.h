#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "fakes/shop_world.h"
#include "form/keyboard.h"
#include "text/numeric_value.h"
#include "text/strings.h"
#include "ui/grp_form.h"

namespace karvel {

/// A shop, and beside it a plain model that says what must have come of each action. The model
/// reads what the forms show, and nothing else of the program.
class ModelledShop : protected ShopWorld {
 protected:
  using Destination = FtpForm::Destination;
  using Field = FtpForm::Field;
  using Settings = std::map<std::string, std::string>;

  /// Starts the program with the settings as they are.
  void begin(const std::string& argument) {
    closed_ = quits_ = resident_ = sndNg_ = false;
    shift_ = 0;
    stored_["FTP EXIT"] = stored_["FTP INIT"] = "0";
    const int presets[] = {0, 60, 360, 810, 1710};
    counter_ = presets[intervalStored()];
    status_ = "";
    const int modals = desktop.modals;
    start(argument);
    EXPECT_EQ(desktop.modals - modals, argument == "-GRUP" ? 1 : 0);
    seen_ = stored_;
    if (argument == "-GRUP") {
      closed_ = true;
      quits_ = desktop.hasQuit;
      return;  // a dialog has changed the fields already
    }
    const double type = numericValue(stored_["FTP TYPE"]);
    const bool known = type == 0 || type == 1 || (type == 2 && !contract_.empty());
    EXPECT_TRUE(form().Option2[known ? static_cast<int>(type) : 3].selected());
    EXPECT_TRUE(form().Option1[intervalStored()].selected());
    for (const auto& [key, field] : kSaved) EXPECT_EQ(form().Text1[field].text(), stored_[key]);
    EXPECT_EQ(form().text(Field::kShopCode), stored_["FTP CODE"]);
    EXPECT_EQ(form().text(Field::kGroupCode), stored_["GRUP CODE"]);
    EXPECT_EQ(form().text(Field::kGroupName), stored_["GRUP NAME"]);
    EXPECT_EQ(form().chkPassive.value(), numericValue(stored_["FTP PSIV"]) != 0 ? 1 : 0);
    if (argument != "-INIT") stayOrEnd();
    quits_ = false;  // there is no message loop yet
  }

  /// What registering in the dialog stores.
  void storeGroup(const ControlArray& dialog) {
    const auto padded = [](const std::string& typed, std::size_t width) {
      const std::string code = "00000" + std::to_string(std::lround(numericValue(typed)));
      return code.substr(code.size() - width);
    };
    stored_["FTP CODE"] = padded(dialog[Field::kShopCode].text(), 5);
    stored_["GRUP CODE"] = padded(dialog[Field::kGroupCode].text(), 2);
    stored_["GRUP NAME"] = trimmed(dialog[Field::kGroupName].text());
    webGroup_ = trimmed(dialog[GrpForm::Field::kWebGroup].text());
  }

  void expectCommandsDisabled() {
    for (const Control* command : form().Command1.all()) EXPECT_FALSE(command->enabled());
    EXPECT_FALSE(form().MyMenu_Send.enabled);
  }

  void beginClosing() {
    closed_ = quits_ = true;
    resident_ = false;
  }
  int intervalStored() {
    const double value = numericValue(stored_["FTP TIME"]);
    return value == 1 || value == 2 || value == 3 || value == 4 ? static_cast<int>(value) : 0;
  }
  bool chosen(int destination) { return form().Option2[destination].selected(); }
  bool shopCodeValid() { return numericValue(form().text(Field::kShopCode)) > 0; }
  bool accountComplete() {
    return !form().text(Field::kServer).empty() && !form().text(Field::kAccount).empty() &&
           !form().text(Field::kPassword).empty();
  }
  bool sendAllowed(Settings& settings) {
    if (!shopCodeValid()) return false;
    if (chosen(Destination::kOutputFolder)) return numericValue(settings["FTP CHKC"]) == 1;
    if (chosen(Destination::kUserSite)) return numericValue(settings["FTP CHKF"]) == 1;
    return chosen(Destination::kServiceSite) && !contract_.empty();
  }
  bool testAllowed() {
    if (!shopCodeValid()) return false;
    if (chosen(Destination::kOutputFolder)) return !form().text(Field::kOutputFolder).empty();
    if (chosen(Destination::kUserSite)) return accountComplete();
    return chosen(Destination::kServiceSite) && !contract_.empty();
  }
  void stayOrEnd() { sendAllowed(stored_) ? void(resident_ = true) : beginClosing(); }

  void save() {
    for (const auto& [key, field] : kSaved) stored_[key] = trimmed(form().Text1[field].text());
    stored_["FTP PSIV"] = std::to_string(form().chkPassive.value());
    for (int i = 0; i < 4; ++i) {
      if (chosen(i)) stored_["FTP TYPE"] = std::to_string(i);
    }
    const int presets[] = {0, 60, 210, 360, 810};
    for (int i = 0; i < 5; ++i) {
      if (!form().Option1[i].selected()) continue;
      stored_["FTP TIME"] = std::to_string(i);
      counter_ = presets[i];
    }
    const bool none = !shopCodeValid() || chosen(Destination::kNone);
    const bool noFolder = form().text(Field::kOutputFolder).empty();
    if (none || (chosen(Destination::kOutputFolder) && noFolder)) stored_["FTP CHKC"] = "0";
    if (none || (chosen(Destination::kUserSite) && !accountComplete())) stored_["FTP CHKF"] = "0";
  }

  /// One tick of the timer.
  void pass() {
    const bool exits = numericValue(stored_["FTP EXIT"]) != 0;
    const int thresholds[] = {0, 150, 450, 900, 1800};
    const int threshold = thresholds[intervalStored()];
    counter_ = exits ? 1801 : counter_ + 1;
    if (threshold == 0) counter_ = 0;
    const bool runs = threshold != 0 && counter_ >= threshold;
    const int modals = desktop.modals;
    if (exits) beginClosing();
    expectRun(runs, SendMode::kUnattended, [&] { tick(); });
    const double request = numericValue(stored_["FTP INIT"]);
    const bool answered = request != 0 && !exits && !endedInRun_;
    EXPECT_EQ(desktop.modals - modals, answered && request == 2 ? 1 : 0);
    if (!answered) return;
    stored_["FTP INIT"] = "0";
    resident_ = false;
    if (!closed_ && request == 2) stayOrEnd();
  }

  enum class Delivery : std::uint8_t { kSuccess, kNoConnection, kNoTransfer };

  /// How a run to the chosen destination ends now, and what it leaves in the status line.
  std::pair<Delivery, std::string> delivery() {
    const bool table = shopCodeValid() && shift_ != FtpForm::kShiftAlone;
    const auto result = [&](bool taken) {
      return table && taken ? Delivery::kSuccess : Delivery::kNoTransfer;
    };
    if (chosen(Destination::kOutputFolder)) {
      return {result(trimmed(form().text(Field::kOutputFolder)) == kOutFolder &&
                     files.folders.contains(kOutFolder)),
              ""};
    }
    const bool ownSite = chosen(Destination::kUserSite);
    if (!(ownSite ? accountComplete() : serviceAccount_)) return {Delivery::kNoConnection, ""};
    if (!connects_) {
      return {Delivery::kNoConnection, "FTP:OPEN NG 12029/サーバー接続に失敗しました。"};
    }
    const std::string folder = ownSite ? form().text(Field::kSiteFolder) : "";
    if (!folder.empty() && !contains(folder, "shop")) {
      return {Delivery::kNoConnection, "指定フォルダがありません"};
    }
    const std::string identifier = stored_["GRUP CODE"] + stored_["FTP CODE"];
    const bool info = characterCount(identifier) == 7 && numericValue(identifier) > 0;
    if (!table && !info) return {Delivery::kNoTransfer, "FTP:OPEN OK"};
    return {result(takesFiles_), takesFiles_ ? "FTP:PutFile OK" : "FTP:PutFile NG 12003/552 full"};
  }

  std::string boxText(Delivery outcome) {
    if (outcome == Delivery::kNoConnection) {
      return "接続できませんでした。　　\r\nﾈｯﾄﾜｰｸ管理者にご相談下さい。　";
    }
    const std::string sent = "転送できませんでした。　　\r\n";
    return chosen(Destination::kOutputFolder) ? sent : sent + "設定より接続確認を行って下さい。　";
  }

  /// Does what may start a run, and takes over what must come of it.
  void expectRun(bool runs, SendMode mode, const std::function<void()>& action) {
    files.files.erase(logPath());
    const auto boxes = desktop.messageBoxes.size();
    const auto iconBefore = desktop.tray;
    const int modals = desktop.modals;
    const auto [outcome, left] = runs ? delivery() : std::pair{Delivery::kSuccess, status_};
    const bool success = outcome == Delivery::kSuccess;
    const bool box = !success && sndNg_ && mode == SendMode::kUnattended;
    endedInRun_ = false;
    action();
    status_ = left;
    if (runs) {
      if (success && mode != SendMode::kUnattended) save();
      if (success) stored_[chosen(Destination::kOutputFolder) ? "FTP CHKC" : "FTP CHKF"] = "1";
      counter_ = success || box ? 0 : counter_ - 150;
      sndNg_ = !success && !box;
      if (mode == SendMode::kConnectionTest) {
        status_ = success ? "接続完了" : "接続できませんでした";
      } else if (mode == SendMode::kManual && outcome != Delivery::kNoConnection) {
        status_ = success ? "転送完了" : "転送できませんでした";
      }
    }
    ASSERT_EQ(desktop.messageBoxes.size() - boxes, box ? 1U : 0U);
    EXPECT_EQ(box ? desktop.messageBoxes.back().text : "", box ? boxText(outcome) : "");
    const std::string log = content(logPath());
    EXPECT_EQ(contains(log, "Snd Start"), runs);
    EXPECT_EQ(contains(log, "Snd Exit"), runs);
    if (desktop.tray && iconBefore && desktop.modals == modals) {
      const auto ofTheRun = sndNg_ ? TrayImage::kFailure : TrayImage::kNormal;
      EXPECT_EQ(desktop.tray, runs && !box ? ofTheRun : iconBefore);
    }
  }

  void expectModel() {
    for (const auto& [key, value] : stored_) EXPECT_EQ(own(key), value) << key;
    EXPECT_EQ(ticket("FTP INFOMATION", "FTP GRUP"), webGroup_);
    EXPECT_EQ(form().SndNG, sndNg_);
    EXPECT_EQ(trimmed(form().MsgLabel.caption()), status_);
    if (resident_ || closed_) shift_ = 0;
    EXPECT_EQ(form().ShiftState, shift_) << "a window that is not shown holds no key";
    EXPECT_EQ(form().visible(), !resident_ && !closed_);
    EXPECT_EQ(desktop.tray.has_value(), resident_);
    EXPECT_EQ(resident_ ? desktop.trayTip : "", resident_ ? "るりはなリンク集計管理" : "");
    EXPECT_EQ(desktop.timer->enabled(), resident_);
    EXPECT_TRUE(resident_ || desktop.openMenu.empty()) << "the panel ends the menu";
    EXPECT_EQ(desktop.hasQuit, quits_);
    EXPECT_FALSE(desktop.busy);
    EXPECT_EQ(desktop.windows.at(&form())->differences() + desktop.differences, "");
    EXPECT_EQ(internet.openHandles, 0);
    for (const auto& [path, file] : files.files) {
      const bool work = path.ends_with(".txt") || path.ends_with(".inf") || path.ends_with(".TXT");
      EXPECT_FALSE(path.starts_with(kFolder) && work) << path;
    }
    if (closed_) return;
    EXPECT_EQ(form().TimerCount, counter_);
    const bool send = form().Command1[FtpForm::Command::kSend].enabled();
    EXPECT_TRUE(send == sendAllowed(stored_) || send == sendAllowed(seen_));
    EXPECT_EQ(form().MyMenu_Send.enabled, send);
    EXPECT_EQ(form().Command1[FtpForm::Command::kTest].enabled(), testAllowed());
    for (const auto command :
         {FtpForm::Command::kCancel, FtpForm::Command::kOk, FtpForm::Command::kGroup}) {
      EXPECT_TRUE(form().Command1[command].enabled());
    }
    EXPECT_EQ(answeredBy(form(), AnswerKey::kEnter, false, nullptr),
              &form().Command1[FtpForm::Command::kOk]);
    const bool folder = chosen(Destination::kOutputFolder);
    EXPECT_EQ(form().OutputFolderLabel.enabled(), folder);
    EXPECT_EQ(form().Text1[Field::kOutputFolder].enabled(), folder);
    EXPECT_EQ(form().Command3.enabled(), folder);
    EXPECT_EQ(form().Command4.enabled(), chosen(Destination::kUserSite));
    EXPECT_EQ(form().Option2[Destination::kServiceSite].enabled(), !contract_.empty());
  }

  std::string contract_;  ///< the domain of a shop that has the service site
  bool serviceAccount_ = false;
  std::string userCode_;
  std::string webGroup_;
  bool connects_ = true;    ///< the server
  bool takesFiles_ = true;  ///< likewise

  bool closed_ = true;
  bool quits_ = false;
  bool endedInRun_ = false;
  bool resident_ = false;
  bool sndNg_ = false;
  int counter_ = 0;
  int shift_ = 0;
  std::string status_;
  Settings seen_;  ///< when the commands were last evaluated
  Settings stored_ = kSettings;

 private:
  static constexpr std::pair<const char*, int> kSaved[] = {
      {"FTP SEVE", Field::kServer},  {"FTP FOLD", Field::kSiteFolder},
      {"FTP NAME", Field::kAccount}, {"FTP PASS", Field::kPassword},
      {"FTP PORT", Field::kPort},    {"OUT FOLD", Field::kOutputFolder}};
};

}  // namespace karvel
