#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <random>

#include "fakes/shop_world.h"
#include "text/numeric_value.h"
#include "text/strings.h"
#include "ui/grp_form.h"
#include "ui/user_form.h"

namespace karvel {
namespace {

// A random user on the three forms, beside other programs that write requests into the settings
// file and destinations that fail at random. Next to each action a plain model says what must have
// come of it; the model reads what the forms show, and nothing else of the program.

using Command = FtpForm::Command;
using Destination = FtpForm::Destination;
using Field = FtpForm::Field;

class RandomUser : public ::testing::TestWithParam<unsigned>, protected ShopWorld {
 protected:
  RandomUser() {
    internet.folders["/shop"] = {};
    internet.fault = [this](const std::string& call) { return answerOf(call); };
    desktop.onModal = [this](Form& dialog) { useDialog(dialog); };
    desktop.onPending = [this] { actWhileClosing(); };
    desktop.onMessageBox = [this] {
      EXPECT_FALSE(desktop.timer->enabled());
      if (below(8) != 0) return;
      endedInRun_ = true;
      endSession();
    };
    desktop.onDiscard = [this] { expectCommandsDisabled(); };
  }

  void live(int actions) {
    begin();
    for (int i = 0; i < actions && !HasFailure(); ++i) {
      if (closed_) {
        useLeftovers();
        begin();
      } else if (below(4) == 0) {
        changeWorld();
      } else {
        resident_ ? actResident() : actOnPanel();
      }
      expectModel();
    }
    if (!HasFailure()) return;
    std::string last = "seed " + std::to_string(GetParam()) + ", the last actions:";
    for (const std::string& action : done_) last += "\n  " + action;
    ADD_FAILURE() << last;
  }

 private:
  // What the user, the other programs and the destinations do.

  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  std::string oneOf(const std::vector<std::string>& values) {
    return values[static_cast<std::size_t>(below(static_cast<int>(values.size())))];
  }
  void note(const std::string& action) {
    done_.push_back(action);
    if (done_.size() > 12) done_.pop_front();
  }

  void begin() {
    contract_ = below(2) == 0 ? "d.example" : "";
    setTicket("FTP INFOMATION", "DOMAIN", contract_);
    setTicket("FTP INFOMATION", "FTP USER", contract_.empty() ? "" : "user");
    setTicket("FTP INFOMATION", "FTP CODE", contract_.empty() ? "" : "K-1234567");
    userCode_ = oneOf({"", "0012", "G0012", "g1"});
    setTicket("USER INFOMATION", "USER CODE", userCode_);
    if (below(4) == 0) put("FTP TYPE", oneOf({"0", "1", "2", "3", "x", "7", "1.5", ""}));
    if (below(8) == 0) put("FTP CODE", oneOf({"00345", "", "0", "x"}));
    if (below(8) == 0) put("FTP PSIV", oneOf({"0", "1", "2", "x"}));
    const std::string argument = oneOf({"", "", "-INIT", "-INIT", "-init", "-GRUP"});
    note("start " + argument);
    files.files[path("old.TXT")] = {};
    desktop.hasQuit = false;
    desktop.tray.reset();
    desktop.openMenu.clear();

    closed_ = resident_ = sndNg_ = false;
    shift_ = 0;
    stored_["FTP EXIT"] = stored_["FTP INIT"] = "0";
    const int presets[] = {0, 60, 360, 810, 1710};
    counter_ = presets[intervalStored()];
    status_ = "";
    start(argument);
    seen_ = stored_;
    const double type = numericValue(stored_["FTP TYPE"]);
    const bool known = type == 0 || type == 1 || (type == 2 && !contract_.empty());
    EXPECT_TRUE(form().Option2[known ? static_cast<int>(type) : 3].selected());
    EXPECT_TRUE(form().Option1[intervalStored()].selected());
    const std::pair<int, const char*> fields[] = {
        {Field::kServer, "FTP SEVE"},       {Field::kSiteFolder, "FTP FOLD"},
        {Field::kAccount, "FTP NAME"},      {Field::kPassword, "FTP PASS"},
        {Field::kPort, "FTP PORT"},         {Field::kShopCode, "FTP CODE"},
        {Field::kOutputFolder, "OUT FOLD"}, {Field::kGroupCode, "GRUP CODE"},
        {Field::kGroupName, "GRUP NAME"}};
    for (const auto& [field, key] : fields) {
      if (argument == "-GRUP") break;  // where a dialog has changed them already
      EXPECT_EQ(form().Text1[field].text(), stored_[key]) << key;
    }
    EXPECT_EQ(form().chkPassive.value(), numericValue(stored_["FTP PSIV"]) != 0 ? 1 : 0);
    if (argument == "-GRUP") {
      closed_ = true;
    } else if (argument != "-INIT") {
      stayOrEnd();
    }
  }

  void changeWorld() {
    switch (below(6)) {
      case 0:
        if (files.folders.erase(kOutFolder) == 0) files.folders.insert(kOutFolder);
        return note("the output folder comes or goes");
      case 1:
        connects_ = !connects_;
        return note("the server comes or goes");
      case 2:
        takesFiles_ = below(3) != 0;
        return note("the server takes files or not");
      case 3:
        return put("FTP TIME", oneOf({"0", "1", "1", "2", "3", "4", "5", "x", ""}));
      case 4:
        if (below(4) == 0) put("FTP EXIT", oneOf({"1", "2", "x", ""}));
        return;
      default:
        if (below(2) == 0) put("FTP INIT", oneOf({"1", "2", "3", "-1", "x"}));
    }
  }
  void put(const std::string& key, const std::string& value) {
    note(key + "=" + value);
    setOwn(key, value);
    stored_[key] = value;
  }
  std::optional<FakeInternet::Failure> answerOf(const std::string& call) {
    EXPECT_FALSE(desktop.timer->enabled()) << "during a run";
    if (byHand_) expectCommandsDisabled();
    if (!byHand_ && below(40) == 0) put("FTP INIT", "1");
    if (!byHand_ && below(80) == 0) {
      put("FTP EXIT", "1");
      endedInRun_ = true;
      beginClosing();
    }
    if (!connects_ && call == "connect") return FakeInternet::Failure{12029};
    if (!takesFiles_ && call.starts_with("put ")) {
      return FakeInternet::Failure{Internet::kErrorExtended, "552 full"};
    }
    return std::nullopt;
  }

  void expectCommandsDisabled() {
    for (const Control* command : form().Command1.all()) EXPECT_FALSE(command->enabled());
    EXPECT_FALSE(form().MyMenu_Send.enabled);
  }

  void actResident() {
    const int action = below(5);
    if (action == 0 && below(6) == 0) return endSession();
    if (action == 1) return useMenu();
    const int ticks = below(3) == 0 ? 1 + below(500) : 1;
    note(std::to_string(ticks) + " ticks");
    for (int i = 0; i < ticks && resident_; ++i) pass();
  }
  void useMenu() {
    note("opens the menu");
    desktop.trayRightButtonUp();
    for (int ticks = below(3); ticks > 0 && resident_; --ticks) {
      if (below(3) == 0) put("FTP INIT", "1");
      pass();
    }
    if (desktop.openMenu.empty()) return;
    MenuItem* chosen = desktop.openMenu[static_cast<std::size_t>(below(4))];
    desktop.openMenu.clear();
    if (!chosen->enabled || !chosen->onClick) return;
    note("chooses " + chosen->caption);
    if (chosen == &form().MyMenu_Send) sndNg_ = false;
    if (chosen == &form().MyMenu_Init) resident_ = false;
    if (chosen == &form().MyMenu_Exit) beginClosing();
    byHand_ = true;
    expectRun(chosen == &form().MyMenu_Send, SendMode::kUnattended, [&] { chosen->onClick(); });
    byHand_ = false;
    if (chosen == &form().MyMenu_Send) seen_ = stored_;
  }

  void actOnPanel() {
    switch (below(12)) {
      case 0:
        note("minimises");
        form().setWindowState(WindowState::kMinimized);
        resident_ = true;
        return;
      case 1:
        shift_ = below(4);
        note("holds " + std::to_string(shift_));
        return form().keyEvent(shift_);
      case 2:
        if (below(6) != 0) return;
        note("closes the panel");
        beginClosing();
        return form().close();
      default:
        use(*form().controls()[static_cast<std::size_t>(below(int(form().controls().size())))]);
    }
  }
  /// As a user can: nothing happens to a control that is hidden or disabled.
  void use(Control& control) {
    if (!control.enabled() || control.has(ControlRow::kHidden)) return;
    switch (control.row().kind) {
      case ControlKind::kTextBox:
        control.focus();
        EXPECT_EQ(control.selectionLength(), characterCount(control.text()));
        return type(control, {kOutFolder, kOutFolder, " out ", "", "o", "nowhere", "表町"});
      case ControlKind::kOptionButton:
        note(std::string(control.row().name) + " " + std::to_string(control.row().index));
        control.select();
        if (&control == form().Option2.find(control.row().index)) seen_ = stored_;
        return;
      case ControlKind::kButton:
        note("presses " + control.caption());
        return press(control);
      default:
        return;
    }
  }
  void type(Control& field, const std::vector<std::string>& texts) {
    const std::string text = oneOf(texts);
    note("types \"" + text + "\" into " + field.row().accessibleName);
    field.setText(text);
  }
  void press(Control& button) {
    const int index = &button == &form().Command3   ? kBrowse
                      : &button == &form().Command4 ? kAccount
                                                    : button.row().index;
    if (index == kBrowse) desktop.chosenFolder = oneOf({"", kOutFolder, "表町"});
    std::string folder = form().text(Field::kOutputFolder);
    if (index == kBrowse && !desktop.chosenFolder.empty()) folder = desktop.chosenFolder;
    if (index == Command::kOk) save();
    if (index <= Command::kOk) stayOrEnd();
    const bool runs = index == Command::kSend || index == Command::kTest;
    if (runs) sndNg_ = false;
    byHand_ = true;
    expectRun(runs, static_cast<SendMode>(index), [&] { button.click(); });
    byHand_ = false;
    EXPECT_EQ(form().text(Field::kOutputFolder), folder);
    if (runs || index == kAccount) seen_ = stored_;
    if (index == Command::kGroup && !closed_) {
      EXPECT_EQ(form().caption(),
                "ｸﾞﾙｰﾌﾟ:" + form().text(Field::kGroupCode) + "/" + form().text(Field::kGroupName) +
                    " 店舗:" + form().text(Field::kShopCode) + "/" + form().text(Field::kShopName));
    }
  }

  void useDialog(Form& dialog) {
    EXPECT_FALSE(desktop.timer->enabled());
    auto* group = dynamic_cast<GrpForm*>(&dialog);
    auto* account = dynamic_cast<UserForm*>(&dialog);
    const ControlArray& texts = group != nullptr ? group->Text1 : account->Text1;
    for (const Control* field : texts.all()) {
      if (group != nullptr && field->row().index == GrpForm::Field::kWebGroup) continue;
      EXPECT_EQ(field->text(), form().Text1[field->row().index].text()) << "as the panel has it";
    }
    if (group != nullptr) {
      const Control& web = group->Text1[GrpForm::Field::kWebGroup];
      EXPECT_EQ(web.enabled(), userCode_.starts_with('G'));
      EXPECT_EQ(web.text(), web.enabled() || userCode_.empty() ? webGroup_ : "");
    }
    std::string before;
    for (const Control* field : form().Text1.all()) before += field->text() + "\t";
    for (int edits = below(6); edits > 0; --edits) {
      Control& field = *texts.all()[static_cast<std::size_t>(below(int(texts.all().size())))];
      const bool site = account != nullptr && field.row().index == Field::kSiteFolder;
      if (!field.enabled()) continue;
      type(field,
           site ? std::vector<std::string>{"shop", "", "/shop/", "none"}
                : std::vector<std::string>{"7", "", " 12 3 ", "123456", "12x", "1e1", "&H", "表"});
    }
    if (account != nullptr && below(4) == 0) {
      account->Command2.click();
      EXPECT_EQ(account->Text1[Field::kPort].text(), "21");
    }
    if (account != nullptr && below(4) == 0) account->chkPassive.setValue(below(2));

    if (below(3) == 0) {
      note("registers");
      if (group != nullptr) storeGroup(*group);
      dialog.control("Command1", GrpForm::Command::kRegister).click();
      for (const Control* field : texts.all()) {
        const int index = field->row().index;
        if (group != nullptr && index == GrpForm::Field::kWebGroup) continue;
        EXPECT_EQ(form().Text1[index].text(), field->text());
      }
      const int passive =
          account != nullptr ? account->chkPassive.value() : form().chkPassive.value();
      EXPECT_EQ(form().chkPassive.value(), passive);
    } else {
      note("leaves the dialog");
      switch (below(8)) {
        case 0:
          endSession();
          break;
        case 1:
          dialog.close();
          break;
        default:
          dialog.control("Command1", GrpForm::Command::kCancel).click();
      }
      std::string after;
      for (const Control* field : form().Text1.all()) after += field->text() + "\t";
      EXPECT_EQ(after, before) << "cancelled";
    }
    EXPECT_TRUE(dialog.closed() || closed_);
  }
  void storeGroup(const GrpForm& dialog) {
    const auto padded = [](const std::string& typed, std::size_t width) {
      const std::string code = "00000" + std::to_string(std::lround(numericValue(typed)));
      return code.substr(code.size() - width);
    };
    stored_["FTP CODE"] = padded(dialog.Text1[Field::kShopCode].text(), 5);
    stored_["GRUP CODE"] = padded(dialog.Text1[Field::kGroupCode].text(), 2);
    stored_["GRUP NAME"] = trimmed(dialog.Text1[Field::kGroupName].text());
    webGroup_ = trimmed(dialog.Text1[GrpForm::Field::kWebGroup].text());
  }

  void endSession() {
    note("the session ends");
    beginClosing();
    desktop.endSession();
  }
  /// Messages are handled while the program closes: nothing that they do has an effect.
  void actWhileClosing() {
    if (!closed_) return;
    useLeftovers();
  }
  void useLeftovers() {
    const std::string log = content(logPath());
    for (int tries = 0; tries < 4; ++tries) {
      Control& control =
          *form().controls()[static_cast<std::size_t>(below(int(form().controls().size())))];
      const bool reachable =
          form().visible() && control.enabled() && !control.has(ControlRow::kHidden);
      if (!reachable) continue;
      note("too late: " + std::string(control.row().name) + std::to_string(control.row().index));
      if (control.row().kind == ControlKind::kButton) control.click();
      if (control.row().kind == ControlKind::kOptionButton) control.select();
    }
    for (MenuItem* item : desktop.openMenu) {
      if (item->enabled && item->onClick) item->onClick();
    }
    if (below(3) == 0) form().close();
    tick();
    EXPECT_EQ(content(logPath()), log) << "a closed program takes no command";
  }

  // What must come of it.

  void beginClosing() {
    closed_ = true;
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
  bool sendAllowed(std::map<std::string, std::string>& settings) {
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
    const std::pair<const char*, int> fields[] = {
        {"FTP SEVE", Field::kServer},  {"FTP FOLD", Field::kSiteFolder},
        {"FTP NAME", Field::kAccount}, {"FTP PASS", Field::kPassword},
        {"FTP PORT", Field::kPort},    {"OUT FOLD", Field::kOutputFolder}};
    for (const auto& [key, field] : fields) stored_[key] = trimmed(form().Text1[field].text());
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
    const std::size_t modals = desktop.modals.size();
    if (exits) beginClosing();
    expectRun(runs, SendMode::kUnattended, [&] { tick(); });
    const double request = numericValue(stored_["FTP INIT"]);
    const bool answered = request != 0 && !exits && !endedInRun_;
    EXPECT_EQ(desktop.modals.size() - modals, answered && request == 2 ? 1U : 0U);
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
    if (ownSite ? !accountComplete() : contract_.empty()) return {Delivery::kNoConnection, ""};
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
    clearLog();
    const auto boxes = desktop.messageBoxes.size();
    const auto iconBefore = desktop.tray;
    const auto modals = desktop.modals.size();
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
    if (desktop.tray && iconBefore && desktop.modals.size() == modals) {
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
    EXPECT_EQ(desktop.timer->enabled(), resident_);
    EXPECT_TRUE(resident_ || desktop.openMenu.empty()) << "the panel ends the menu";
    EXPECT_EQ(internet.openHandles, 0);
    for (const auto& [path, file] : files.files) {
      const bool work = path.ends_with(".txt") || path.ends_with(".inf") || path.ends_with(".TXT");
      EXPECT_FALSE(path.starts_with(kFolder) && work) << path;
    }
    if (closed_) return;
    EXPECT_EQ(form().TimerCount, counter_);
    EXPECT_FALSE(desktop.hasQuit);
    const bool send = form().Command1[Command::kSend].enabled();
    EXPECT_TRUE(send == sendAllowed(stored_) || send == sendAllowed(seen_));
    EXPECT_EQ(form().MyMenu_Send.enabled, send);
    EXPECT_EQ(form().Command1[Command::kTest].enabled(), testAllowed());
    for (const auto command : {Command::kCancel, Command::kOk, Command::kGroup}) {
      EXPECT_TRUE(form().Command1[command].enabled());
    }
    const bool folder = chosen(Destination::kOutputFolder);
    EXPECT_EQ(form().OutputFolderLabel.enabled(), folder);
    EXPECT_EQ(form().Text1[Field::kOutputFolder].enabled(), folder);
    EXPECT_EQ(form().Command3.enabled(), folder);
    EXPECT_EQ(form().Command4.enabled(), chosen(Destination::kUserSite));
    EXPECT_EQ(form().Option2[Destination::kServiceSite].enabled(), !contract_.empty());
  }

  static constexpr int kBrowse = 10;
  static constexpr int kAccount = 11;

  std::mt19937 random_{GetParam()};
  std::deque<std::string> done_;
  std::string contract_;  ///< the domain of a shop that has the service site
  std::string userCode_;
  std::string webGroup_;
  bool connects_ = true;
  bool takesFiles_ = true;
  bool byHand_ = false;  ///< a run that a user has started lasts

  bool closed_ = true;
  bool endedInRun_ = false;
  bool resident_ = false;
  bool sndNg_ = false;
  int counter_ = 0;
  int shift_ = 0;
  std::string status_;
  std::map<std::string, std::string> seen_;  ///< when the commands were last evaluated
  std::map<std::string, std::string> stored_{
      {"FTP TYPE", "0"},  {"FTP TIME", "1"},     {"FTP CODE", "00345"}, {"GRUP CODE", "12"},
      {"FTP PORT", "21"}, {"GRUP NAME", "表町"}, {"OUT FOLD", "out"},   {"FTP CHKC", "1"},
      {"FTP PSIV", "1"},  {"HST FOLD", kFolder}, {"FTP CHKF", "0"}};
};

TEST_P(RandomUser, FindsTheProgramAsTheModelHasIt) {
  live(600);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomUser, ::testing::Range(1U, 9U));

}  // namespace
}  // namespace karvel
