#include <array>

#include "ui/grp_form.h"

namespace karvel {
namespace {

using Kind = ControlKind;
using Row = ControlRow;
constexpr int kNoIndex = Row::kNoIndex;
constexpr int kNoTab = Row::kNoTab;

constexpr std::array kControls{
    Row{Kind::kFrame, "Frame1", kNoIndex, "", {6, 4, 348, 180}},
    Row{Kind::kLabel, "Label1", 9, "◆ｸﾞﾙｰﾌﾟ設定", {12, 10, 120, 10}, kNoTab, Row::kTitle},
    Row{Kind::kLabel, "Label1", 4, "WEBｸﾞﾙｰﾌﾟ", {24, 26, 60, 10}},
    Row{Kind::kTextBox, "Text1", 0, "", {88, 24, 60, 14}, 0, Row::kDisabled, 8},
    Row{Kind::kLabel,
        "Label1",
        6,
        "※弊社からお知らせした「WEBｸﾞﾙｰﾌﾟ」を入力して下さい。",
        {88, 40, 260, 10},
        kNoTab,
        Row::kNote},
    Row{Kind::kLabel, "Label1", 2, "ｸﾞﾙｰﾌﾟｺｰﾄﾞ", {24, 56, 60, 10}},
    Row{Kind::kTextBox, "Text1", 8, "", {88, 54, 30, 14}, 1, Row::kDigitsOnly, 2},
    Row{Kind::kLabel, "Label1", 1, "※半角数字で2文字以内", {124, 56, 200, 10}, kNoTab, Row::kNote},
    Row{Kind::kLabel, "Label1", 3, "ｸﾞﾙｰﾌﾟ名", {24, 74, 60, 10}},
    Row{Kind::kTextBox,
        "Text1",
        9,
        "",
        {88, 72, 250, 14},
        2,
        Row::kPlain,
        0,
        InputMethod::kHiragana},
    Row{Kind::kLine, "Line1", kNoIndex, "", {12, 92, 336, 2}},
    Row{Kind::kLabel, "Label1", 8, "◆店舗設定", {12, 98, 120, 10}, kNoTab, Row::kTitle},
    Row{Kind::kLabel, "Label1", 7, "店舗ｺｰﾄﾞ", {24, 114, 60, 10}},
    Row{Kind::kTextBox, "Text1", 5, "", {88, 112, 40, 14}, 3, Row::kDigitsOnly, 5},
    Row{Kind::kLabel, "Label1", 5, "※半角数字で5文字以内", {134, 114, 200, 10}, kNoTab, Row::kNote},
    Row{Kind::kLabel, "Label1", 0, "店舗名", {24, 132, 60, 10}},
    Row{Kind::kTextBox, "Text1", 6, "", {88, 130, 250, 14}, kNoTab, Row::kDisabled},
    Row{Kind::kLine, "Line2", kNoIndex, "", {12, 150, 336, 2}},
    Row{Kind::kLabel,
        "Label1",
        12,
        "※ｸﾞﾙｰﾌﾟ管理をお使いの店舗様は必ず他店様と重複しない「店舗ｺｰﾄﾞ」を登録して下さい。",
        {12, 156, 336, 20},
        kNoTab,
        Row::kNote},
    Row{Kind::kLabel,
        "Label1",
        13,
        "グループ管理を利用しない場合は設定不要です。",
        {12, 190, 336, 10},
        kNoTab,
        Row::kNote},
    Row{Kind::kButton,
        "Command1",
        1,
        "登　録",
        {200, 206, 70, 16},
        4,
        Row::kDefaultButton,
        0,
        InputMethod::kOff,
        "設定情報の保存/実行"},
    Row{Kind::kButton, "Command1", 0, "ｷｬﾝｾﾙ", {280, 206, 70, 16}, 5, Row::kCancelButton},
};

}  // namespace

const FormTable kGrpFormTable{"GrpForm", "グループ登録", 360, 228, false, kControls};

}  // namespace karvel
