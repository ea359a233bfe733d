#include <array>

#include "form/control_rows.h"
#include "ui/grp_form.h"

namespace karvel {
namespace {

using Kind = ControlKind;
using Row = ControlRow;
using rows::button;
using rows::decoration;
using rows::label;
using rows::note;
using rows::textBox;

constexpr std::array kControls{
    decoration(Kind::kFrame, "Frame1", {8, 6, 344, 182}),

    label(9, "◆ｸﾞﾙｰﾌﾟ設定", {14, 12, 332, 12}, Row::kTitle),
    label(4, "WEBｸﾞﾙｰﾌﾟ", {24, 30, 64, 14}),
    textBox(0, "WEBｸﾞﾙｰﾌﾟ", {92, 30, 64, 14}, 0, Row::kDisabled, 8),
    note(6, "※弊社からお知らせした「WEBｸﾞﾙｰﾌﾟ」を入力して下さい。", {92, 46, 254, 10}),
    label(2, "ｸﾞﾙｰﾌﾟｺｰﾄﾞ", {24, 61, 64, 14}),
    textBox(8, "ｸﾞﾙｰﾌﾟｺｰﾄﾞ", {92, 61, 28, 14}, 1, Row::kDigitsOnly, 2),
    note(1, "※半角数字で2文字以内", {126, 61, 220, 14}),
    label(3, "ｸﾞﾙｰﾌﾟ名", {24, 79, 64, 14}),
    textBox(9, "ｸﾞﾙｰﾌﾟ名", {92, 79, 254, 14}, 2, Row::kPlain, 0, InputMethod::kHiragana),

    label(8, "◆店舗設定", {14, 102, 332, 12}, Row::kTitle),
    label(7, "店舗ｺｰﾄﾞ", {24, 120, 64, 14}),
    textBox(5, "店舗ｺｰﾄﾞ", {92, 120, 40, 14}, 3, Row::kDigitsOnly, 5),
    note(5, "※半角数字で5文字以内", {138, 120, 208, 14}),
    label(0, "店舗名", {24, 138, 64, 14}),
    rows::display(6, "店舗名", {92, 138, 254, 14}),

    decoration(Kind::kLine, "Line1", {14, 158, 332, 2}),
    note(12, "※ｸﾞﾙｰﾌﾟ管理をお使いの店舗様は必ず他店様と重複しない「店舗ｺｰﾄﾞ」を登録して下さい。",
         {14, 163, 332, 20}),
    note(13, "グループ管理を利用しない場合は設定不要です。", {10, 192, 342, 10}),

    decoration(Kind::kLine, "Line2", {8, 207, 344, 2}),
    button("Command1", 1, "登　録", {206, 214, 70, 16}, 4, Row::kDefaultButton,
           "設定情報の保存/実行"),
    button("Command1", 0, "ｷｬﾝｾﾙ", {282, 214, 70, 16}, 5, Row::kCancelButton),
};

}  // namespace

const FormTable kGrpFormTable{"GrpForm", "グループ登録", 360, 238, false, kControls};

}  // namespace karvel
