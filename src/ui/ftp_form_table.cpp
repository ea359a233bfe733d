#include <array>

#include "form/control_rows.h"
#include "ui/configured_values.h"
#include "ui/ftp_form.h"

namespace karvel {
namespace {

using Kind = ControlKind;
using Row = ControlRow;
using rows::button;
using rows::hidden;
using rows::label;
using rows::note;
using rows::option;
using rows::textBox;

constexpr int kNoIndex = Row::kNoIndex;
constexpr int kNoTab = Row::kNoTab;
constexpr Rect kNowhere{};

constexpr Row title(int index, const char* caption, Rect rect) {
  return {.kind = Kind::kLabel,
          .name = "Label3",
          .index = index,
          .caption = caption,
          .rect = rect,
          .style = Row::kTitle};
}

constexpr Row list(const char* name, std::uint32_t style = Row::kPlain) {
  return hidden({.kind = Kind::kListBox, .name = name, .style = style});
}

constexpr std::array kControls{
    note(12,
         "集計管理とは、発券集計の情報を本部サーバー等に転送し外部から管理者が確認するための"
         "機能です。　　※設定詳細はﾈｯﾄﾜｰｸ管理者におたずね下さい。",
         {10, 8, 388, 20}),
    note(13, "集計管理を利用しない場合は設定不要です。", {10, 30, 388, 10}),

    // What belongs to a destination is beside it in the second column.
    title(3, "　■保存先指定", {10, 46, 388, 12}),
    option("Option2", 0, "ﾌｫﾙﾀﾞ設定 ( 指定ﾌｫﾙﾀﾞへ出力 )", {18, 63, 134, 14}, 0),
    label(10, "ﾌｫﾙﾀﾞ", {154, 63, 24, 14}, Row::kDisabled),
    textBox(7, "出力ﾌｫﾙﾀﾞ", {180, 63, 162, 14}, 1, Row::kDisabled),
    button("Command3", kNoIndex, "参照", {348, 63, 50, 14}, 2, Row::kDisabled),
    option("Option2", 1, "ﾕｰｻﾞｰ管理ｻｲﾄ", {18, 81, 134, 14}, 3),
    button("Command4", kNoIndex, "ユーザーサイト設定", {154, 81, 100, 14}, 4, Row::kDisabled),
    option("Option2", 2, "るりはなリンク管理ｻｲﾄ", {18, 99, 134, 14}, 5, Row::kDisabled),
    note(11, "※「そよかぜボード」の契約が必要です。", {154, 99, 244, 14}),
    option("Option2", 3, "利用しない", {18, 117, 134, 14}, 6),

    title(2, "　■転送条件", {10, 138, 388, 12}),
    label(9, "自動", {18, 155, 26, 14}),
    option("Option1", 0, "手動", {52, 155, 56, 14}, 7),
    option("Option1", 1, "5分", {120, 155, 56, 14}, 8),
    option("Option1", 2, "15分", {188, 155, 56, 14}, 9),
    option("Option1", 3, "30分", {256, 155, 56, 14}, 10),
    option("Option1", 4, "60分", {324, 155, 56, 14}, 11),

    rows::display(8, "ｸﾞﾙｰﾌﾟｺｰﾄﾞ", {18, 175, 36, 14}, 4),
    rows::display(9, "ｸﾞﾙｰﾌﾟ名", {58, 175, 130, 14}),
    rows::display(5, "店舗ｺｰﾄﾞ", {200, 175, 48, 14}, 8),
    rows::display(6, "店舗名", {252, 175, 146, 14}),

    note(5,
         "「保存先指定」「ｸﾞﾙｰﾌﾟ登録」の設定後、「接続確認」を行って下さい。接続が完了すると、"
         "「集計管理」がご利用可能です。",
         {10, 195, 388, 20}),

    button("Command1", 4, "ｸﾞﾙｰﾌﾟ登録", {10, 221, 70, 16}, 12, Row::kPlain, "店舗のグループ設定"),
    button("Command1", 3, "接続確認", {86, 221, 70, 16}, 13, Row::kDisabled,
           "保存先設定へ接続試験"),
    button("Command1", 2, "手動転送", {162, 221, 70, 16}, 14, Row::kDisabled,
           "集計データを保存先へ手動転送"),
    button("Command1", 1, "OK", {252, 221, 70, 16}, 15, Row::kDefaultButton, "設定情報の保存/実行"),
    button("Command1", 0, "ｷｬﾝｾﾙ", {328, 221, 70, 16}, 16, Row::kCancelButton),

    rows::decoration(Kind::kFrame, "Frame1", {10, 243, 388, 24}),
    Row{.kind = Kind::kLabel, .name = "MsgLabel", .rect = {15, 245, 378, 20}},

    // The account of the user's own site is edited in its own dialog; here is its working copy.
    hidden(label(0, "ｻｲﾄ", kNowhere)),
    hidden(textBox(0, "ｻｲﾄ", kNowhere, kNoTab)),
    hidden(label(6, configured::kSiteNote, kNowhere)),
    hidden(label(1, "ｻｲﾄ･ﾌｫﾙﾀﾞ", kNowhere)),
    hidden(textBox(1, "ｻｲﾄ･ﾌｫﾙﾀﾞ", kNowhere, kNoTab)),
    hidden(label(8, "※転送先サイト内の保存フォルダを設定　(例)　shop/", kNowhere)),
    hidden(label(2, "ｱｶｳﾝﾄ名", kNowhere)),
    hidden(textBox(2, "ｱｶｳﾝﾄ名", kNowhere, kNoTab)),
    hidden(label(3, "ﾊﾟｽﾜｰﾄﾞ", kNowhere)),
    hidden(textBox(3, "ﾊﾟｽﾜｰﾄﾞ", kNowhere, kNoTab, Row::kPassword)),
    hidden(label(4, "接続ﾎﾟｰﾄ番号", kNowhere)),
    hidden(textBox(4, "接続ﾎﾟｰﾄ番号", kNowhere, kNoTab, Row::kPlain, 5)),
    hidden(rows::checkBox("chkPassive", "Passive ﾓｰﾄﾞ有効", kNowhere, kNoTab)),

    // Work controls of the form. The program writes the remote listing into lstFiles; it uses none
    // of the others and reads none.
    hidden({.kind = Kind::kTextBox, .name = "CovText"}),
    list("List1"),
    list("List2"),
    list("lstFiles"),
};

}  // namespace

const FormTable kFtpFormTable{"FtpForm", "集計管理", 408, 275, true, kControls};

}  // namespace karvel
