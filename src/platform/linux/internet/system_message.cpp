#include "platform/linux/internet/system_message.h"

#include <algorithm>
#include <iterator>

namespace karvel {
namespace {

struct Message {
  Internet::ErrorNumber number;
  const char* text;
};

constexpr Message kMessages[] = {
    {2, "ファイルが見つからないか、読み取れません。"},
    {3, "フォルダーが見つかりません。"},
    {5, "アクセスが許可されていません。"},
    {6, "ハンドルが正しくありません。"},
    {8, "メモリが不足しています。"},
    {18, "これ以上ファイルはありません。"},
    {32, "ファイルは別のプログラムで使われています。"},
    {80, "同じ名前のファイルがすでにあります。"},
    {87, "引数に誤りがあります。"},
    {112, "ディスクの空きが不足しています。"},
    {12001, "これ以上の接続はできません。"},
    {12005, "アドレスの形式が正しくありません。"},
    {12006, "この通信方式には対応していません。"},
    {12009, "オプションの番号が正しくありません。"},
    {12017, "処理は取り消されました。"},
    {12110, "転送中のため、この操作はできません。"},
    {12111, "FTP の接続が切断されました。"},
};

}  // namespace

std::string systemMessage(Internet::ErrorNumber number) {
  const auto* const found =
      std::find_if(std::begin(kMessages), std::end(kMessages),
                   [number](const Message& message) { return message.number == number; });
  return found == std::end(kMessages) ? std::string() : std::string(found->text);
}

}  // namespace karvel
