#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <functional>

#include "form/text_entry.h"
#include "unit/modelled_shop.h"

namespace karvel {

/// A user on the three forms whose actions are drawn from `random`, beside other programs that
/// write requests into the settings file and destinations that fail.
class RandomUser : private ModelledShop {
 public:
  explicit RandomUser(std::function<unsigned()> random) : random_(std::move(random)) {
    internet.folders["/shop"] = {};
    internet.fault = [this](const std::string& call) { return answerOf(call); };
    desktop.onModal = [this](Form& dialog) { useDialog(dialog); };
    desktop.onPending = [this] {
      if (closed_) useLeftovers();
    };
    desktop.onMessageBox = [this] {
      EXPECT_FALSE(desktop.timer->enabled());
      if (below(8) != 0) return;
      endedInRun_ = true;
      endSession();
    };
    desktop.onBusyEnd = [this] { expectCommandsDisabled(); };
  }

  /// So many actions, or fewer when the program is not as the model has it.
  void live(int actions) {
    using ::testing::Test;
    begin();
    for (int i = 0; i < actions && !Test::HasFailure(); ++i) {
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
    if (!Test::HasFailure()) return;
    std::string last = "the last actions:";
    for (const std::string& action : done_) last += "\n  " + action;
    ADD_FAILURE() << last;
  }

 private:
  using Command = FtpForm::Command;
  using Strings = std::vector<std::string>;

  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  template <typename Value>
  const Value& oneOf(const std::vector<Value>& values) {
    return values[static_cast<std::size_t>(below(static_cast<int>(values.size())))];
  }
  std::string oneOf(const Strings& values) { return oneOf<std::string>(values); }
  void note(const std::string& action) {
    done_.push_back(action);
    if (done_.size() > 12) done_.pop_front();
  }

  void begin() {
    contract_ = below(2) == 0 ? "d.example" : "";
    setTicket("FTP INFOMATION", "DOMAIN", contract_);
    const std::string user = contract_.empty() ? "" : oneOf({"user", "user", ""});
    const std::string code = contract_.empty() ? "" : oneOf({"K-1234567", "K-1234567", ""});
    serviceAccount_ = !user.empty() && !code.empty();
    setTicket("FTP INFOMATION", "FTP USER", user);
    setTicket("FTP INFOMATION", "FTP CODE", code);
    userCode_ = oneOf({"", "0012", "G0012", "g1"});
    setTicket("USER INFOMATION", "USER CODE", userCode_);
    if (below(4) == 0) put("FTP TYPE", oneOf({"0", "1", "2", "3", "x", "7", "1.5", ""}));
    if (below(8) == 0) put("FTP CODE", oneOf({"00345", "", "0", "x"}));
    if (below(8) == 0) put("FTP PSIV", oneOf({"0", "1", "2", "x"}));
    if (below(8) == 0) put("FTP CHKC", oneOf({"1x", "2"}));
    if (below(4) == 0) put("FTP CHKF", "1");
    if (below(8) == 0) put("OUT FOLD", "");
    const std::string argument = oneOf({"", "", "-INIT", "-INIT", "-init", "-GRUP"});
    note("start " + argument);
    files.files[path("old.TXT")] = {};
    desktop.hasQuit = false;
    desktop.tray.reset();
    desktop.openMenu.clear();

    ModelledShop::begin(argument);
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

  void actResident() {
    const int action = below(5);
    if (action == 0 && below(6) == 0) return endSession();
    if (action == 1) return useMenu();
    if (action == 2) form().keyEvent(FtpForm::kShiftAlone);
    const int ticks = below(3) == 0 ? 1 + below(500) : 1;
    note(std::to_string(ticks) + " ticks");
    for (int i = 0; i < ticks && resident_; ++i) pass();
  }
  void useMenu() {
    note("opens the menu");
    desktop.trayRightButtonUp();
    std::string captions;
    for (const MenuItem* item : desktop.openMenu) {
      captions += item->caption + (item->onClick ? "!|" : "|");
    }
    EXPECT_EQ(captions, "手動転送!|接続設定!|-|常駐停止!|");
    for (int ticks = below(3); ticks > 0 && resident_; --ticks) {
      if (below(3) == 0) put("FTP INIT", "1");
      pass();
    }
    if (desktop.openMenu.empty()) return;
    MenuItem* chosen = oneOf(desktop.openMenu);
    desktop.openMenu.clear();
    if (!chosen->enabled || !chosen->onClick) return;
    note("chooses " + chosen->caption);
    if (chosen == &form().MyMenu_Send) sndNg_ = false;
    if (chosen == &form().MyMenu_Init) resident_ = false;
    if (chosen == &form().MyMenu_Exit) beginClosing();
    runByHand(chosen == &form().MyMenu_Send, SendMode::kUnattended,
              [&] { chosen->choose(form()); });
    if (chosen == &form().MyMenu_Send) seen_ = stored_;
    EXPECT_EQ(form().caption(), resident_ ? "" : "集計管理");
  }

  void runByHand(bool runs, SendMode mode, const std::function<void()>& action) {
    byHand_ = true;
    expectRun(runs, mode, action);
    byHand_ = false;
  }

  void actOnPanel() {
    switch (below(11)) {
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
      case 3:
        return use(*oneOf(form().Command1.all()));
      default:
        use(*oneOf(form().controls()));
    }
  }
  /// As a user can: nothing happens to a control that is hidden or disabled.
  void use(Control& control) {
    if (!control.enabled() || control.has(ControlRow::kHidden)) return;
    switch (control.row().kind) {
      case ControlKind::kTextBox:
        return type(control, {kOutFolder, kOutFolder, " out ", "", "o", "nowhere", "表\r\n町"});
      case ControlKind::kOptionButton:
        note(std::string(control.row().name) + " " + std::to_string(control.row().index));
        if (!control.selected() && control.row().name == std::string_view("Option2")) {
          seen_ = stored_;
        }
        return control.click();
      case ControlKind::kButton:
        note("presses " + control.caption());
        return press(control);
      default:
        return;
    }
  }
  void type(Control& field, const Strings& texts) {
    field.focus();
    EXPECT_EQ(field.selectionStart(), 0U);
    EXPECT_EQ(field.selectionLength(), characterCount(field.text()));
    const std::string text = oneOf(texts);
    note("types \"" + text + "\" into " + field.row().accessibleName);
    field.setText(acceptedInsertion(field.row(), text, 0));
  }
  void press(Control& button) {
    const int index = &button == &form().Command3   ? kBrowse
                      : &button == &form().Command4 ? kAccount
                                                    : button.row().index;
    if (index == kBrowse) desktop.chosenFolder = oneOf({"", kOutFolder, "表町"});
    std::string folder = form().text(Field::kOutputFolder);
    const std::string dialogs = index == kBrowse ? "フォルダの選択 " + folder : "";
    if (index == kBrowse && !desktop.chosenFolder.empty()) folder = desktop.chosenFolder;
    if (index == Command::kOk) save();
    if (index <= Command::kOk) stayOrEnd();
    const bool runs = index == Command::kSend || index == Command::kTest;
    if (runs) sndNg_ = false;
    runByHand(runs, static_cast<SendMode>(index), [&] { button.click(); });
    EXPECT_EQ(std::exchange(desktop.folderDialogs, ""), dialogs);
    EXPECT_EQ(form().text(Field::kOutputFolder), folder);
    if (runs || index == kAccount) seen_ = stored_;
    if (index == Command::kGroup && !closed_) {
      EXPECT_EQ(form().caption(),
                "ｸﾞﾙｰﾌﾟ:" + form().text(Field::kGroupCode) + "/" + form().text(Field::kGroupName) +
                    " 店舗:" + form().text(Field::kShopCode) + "/" + form().text(Field::kShopName));
    }
  }

  /// What a dialog shows when it opens, and again when its fields have been handed back.
  void expectDialog(const Form& dialog, const ControlArray& texts, bool group) {
    EXPECT_EQ(dialog.topmost(), group);
    for (const Control* field : texts.all()) {
      const int index = field->row().index;
      const bool code = index == Field::kShopCode || index == Field::kGroupCode;
      EXPECT_EQ(field->has(ControlRow::kDigitsOnly), group && code);
      EXPECT_EQ(field->has(ControlRow::kPassword), index == Field::kPassword);
      if (group && index == GrpForm::Field::kWebGroup) {
        EXPECT_EQ(field->enabled(), userCode_.starts_with('G'));
        const bool kept = field->enabled() || userCode_.empty();
        EXPECT_EQ(trimmed(field->text()), kept ? webGroup_ : "");
      } else {
        EXPECT_EQ(field->text(), form().Text1[index].text());
      }
    }
    if (group) return;
    EXPECT_EQ(dialog.control("chkPassive").value(), form().chkPassive.value());
  }
  void useDialog(Form& dialog) {
    EXPECT_FALSE(desktop.timer->enabled());
    const ControlArray texts(dialog, "Text1");
    const bool group = dialog.table().name == std::string_view("GrpForm");
    expectDialog(dialog, texts, group);
    const std::string before = panelTexts();
    for (int edits = below(6); edits > 0; --edits) {
      Control& field = *oneOf(texts.all());
      if (!field.enabled()) continue;
      const bool site = !group && field.row().index == Field::kSiteFolder;
      type(field, site ? Strings{"shop", "", "/shop/", "none"}
                       : Strings{"7", "", " 12 3 ", "123456", "12x", "1e1", "&H", "表\t1"});
    }
    if (!group && below(4) == 0) {
      dialog.control("Command2").click();
      EXPECT_EQ(texts[Field::kPort].text(), "21");
    }
    if (!group && below(4) == 0) dialog.control("chkPassive").setValue(below(2));

    if (below(3) == 0) {
      note("registers");
      if (group) storeGroup(texts);
      dialog.control("Command1", GrpForm::Command::kRegister).click();
      expectDialog(dialog, texts, group);
    } else {
      note("leaves the dialog");
      switch (below(8)) {
        case 0:
          endSession();
          EXPECT_TRUE(dialog.closed());
          break;
        case 1:
          dialog.close();
          break;
        default:
          dialog.control("Command1", GrpForm::Command::kCancel).click();
      }
      EXPECT_EQ(panelTexts(), before) << "cancelled";
    }
    EXPECT_TRUE(dialog.closed() || closed_);
    EXPECT_FALSE(dialog.takesInput());
  }
  std::string panelTexts() {
    std::string texts;
    for (const Control* field : form().Text1.all()) texts += field->text() + "\t";
    return texts;
  }
  void endSession() {
    note("the session ends");
    beginClosing();
    desktop.endSession();
  }
  /// Also in the messages that are handled while the program closes.
  void useLeftovers() {
    if (form().takesInput()) return;  // it has ended at its start and shown no window
    const std::string log = content(logPath());
    const std::string texts = panelTexts();
    const int passive = form().chkPassive.value();
    for (int tries = 0; tries < 4; ++tries) {
      Control& control = *oneOf(form().controls());
      note("too late: " + std::string(control.row().name) + std::to_string(control.row().index));
      const bool selected = control.selected();
      control.click();
      control.focus();
      control.setText("too late");
      control.setValue(1 - passive);
      control.select();
      EXPECT_EQ(control.selected(), selected);
    }
    for (const MenuItem* item : form().MyMenu_Task) item->choose(form());
    if (form().closed()) form().setVisible(true);
    if (below(3) == 0) form().close();
    tick();
    EXPECT_EQ(content(logPath()), log) << "a closed program takes no command";
    EXPECT_EQ(panelTexts(), texts);
    EXPECT_EQ(form().chkPassive.value(), passive);
  }

  static constexpr int kBrowse = 10;
  static constexpr int kAccount = 11;

  std::function<unsigned()> random_;
  std::deque<std::string> done_;
  bool byHand_ = false;  ///< a run that a user has started lasts
};

}  // namespace karvel
