#include <array>

#include "form/control_rows.h"
#include "ui/configured_values.h"
#include "ui/user_form.h"

namespace karvel {
namespace {

using Kind = ControlKind;
using Row = ControlRow;
using rows::button;
using rows::label;
using rows::note;
using rows::textBox;

constexpr std::array kControls{
    rows::decoration(Kind::kFrame, "Frame1", {8, 6, 344, 146}),

    label(0, "ｻｲﾄ", {18, 14, 64, 14}),
    textBox(0, "ｻｲﾄ", {86, 14, 258, 14}, 0),
    note(6, configured::kSiteNote, {86, 30, 258, 10}),
    label(1, "ｻｲﾄ･ﾌｫﾙﾀﾞ", {18, 46, 64, 14}),
    textBox(1, "ｻｲﾄ･ﾌｫﾙﾀﾞ", {86, 46, 258, 14}, 1),
    note(8, "※転送先サイト内の保存フォルダを設定　(例)　shop/", {86, 62, 258, 10}),
    label(2, "ｱｶｳﾝﾄ名", {18, 79, 64, 14}),
    textBox(2, "ｱｶｳﾝﾄ名", {86, 79, 140, 14}, 2),
    label(3, "ﾊﾟｽﾜｰﾄﾞ", {18, 97, 64, 14}),
    textBox(3, "ﾊﾟｽﾜｰﾄﾞ", {86, 97, 140, 14}, 3, Row::kPassword),
    label(4, "接続ﾎﾟｰﾄ番号", {18, 115, 64, 14}),
    textBox(4, "接続ﾎﾟｰﾄ番号", {86, 115, 50, 14}, 4, Row::kPlain, 5),
    button("Command2", Row::kNoIndex, "標準", {142, 115, 44, 14}, 5),
    rows::checkBox("chkPassive", "Passive ﾓｰﾄﾞ有効", {86, 133, 140, 14}, 6),

    note(12, "※設定詳細はﾈｯﾄﾜｰｸ管理者におたずね下さい。", {10, 156, 342, 10}),
    button("Command1", 1, "登　録", {206, 172, 70, 16}, 7, Row::kDefaultButton,
           "設定情報の保存/実行"),
    button("Command1", 0, "ｷｬﾝｾﾙ", {282, 172, 70, 16}, 8, Row::kCancelButton),
};

}  // namespace

const FormTable kUserFormTable{"UserForm", "ユーザーサイト設定", 360, 196, false, kControls};

}  // namespace karvel
