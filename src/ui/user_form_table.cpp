#include <array>

#include "ui/configured_values.h"
#include "ui/user_form.h"

namespace karvel {
namespace {

using Kind = ControlKind;
using Row = ControlRow;
constexpr int kNoIndex = Row::kNoIndex;
constexpr int kNoTab = Row::kNoTab;

constexpr std::array kControls{
    Row{Kind::kFrame, "Frame1", kNoIndex, "", {6, 4, 348, 142}},
    Row{Kind::kLabel, "Label1", 0, "ｻｲﾄ", {16, 14, 64, 10}},
    Row{Kind::kTextBox, "Text1", 0, "", {84, 12, 260, 14}, 0},
    Row{Kind::kLabel, "Label1", 6, configured::kSiteNote, {84, 28, 260, 10}, kNoTab, Row::kNote},
    Row{Kind::kLabel, "Label1", 1, "ｻｲﾄ･ﾌｫﾙﾀﾞ", {16, 44, 64, 10}},
    Row{Kind::kTextBox, "Text1", 1, "", {84, 42, 260, 14}, 1},
    Row{Kind::kLabel,
        "Label1",
        8,
        "※転送先サイト内の保存フォルダを設定　(例)　shop/",
        {84, 58, 260, 10},
        kNoTab,
        Row::kNote},
    Row{Kind::kLabel, "Label1", 2, "ｱｶｳﾝﾄ名", {16, 74, 64, 10}},
    Row{Kind::kTextBox, "Text1", 2, "", {84, 72, 140, 14}, 2},
    Row{Kind::kLabel, "Label1", 3, "ﾊﾟｽﾜｰﾄﾞ", {16, 92, 64, 10}},
    Row{Kind::kTextBox, "Text1", 3, "", {84, 90, 140, 14}, 3, Row::kPassword},
    Row{Kind::kLabel, "Label1", 4, "接続ﾎﾟｰﾄ番号", {16, 110, 64, 10}},
    Row{Kind::kTextBox, "Text1", 4, "", {84, 108, 50, 14}, 4, Row::kPlain, 5},
    Row{Kind::kButton, "Command2", kNoIndex, "標準", {140, 108, 40, 14}, 5},
    Row{Kind::kCheckBox, "chkPassive", kNoIndex, "Passive ﾓｰﾄﾞ有効", {84, 128, 140, 12}, 6},
    Row{Kind::kLabel,
        "Label1",
        12,
        "※設定詳細はﾈｯﾄﾜｰｸ管理者におたずね下さい。",
        {8, 152, 340, 10},
        kNoTab,
        Row::kNote},
    Row{Kind::kButton,
        "Command1",
        1,
        "登　録",
        {200, 168, 70, 16},
        7,
        Row::kDefaultButton,
        0,
        InputMethod::kOff,
        "設定情報の保存/実行"},
    Row{Kind::kButton, "Command1", 0, "ｷｬﾝｾﾙ", {280, 168, 70, 16}, 8, Row::kCancelButton},
};

}  // namespace

const FormTable kUserFormTable{"UserForm", "ユーザーサイト設定", 360, 190, false, kControls};

}  // namespace karvel
