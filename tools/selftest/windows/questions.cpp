#include "selftest/windows/questions.h"

#include <array>

namespace karvel {

std::span<const Question> questions() {
  static constexpr std::array kQuestions{
      Question{"listing", "1. 2回目の一覧はサーバーから来るか、キャッシュから来るか",
               &askListingCache},
      Question{"limits", "2. 時間の制限は守られるか", &askTimeLimits},
      Question{"passive", "3. Passiveモードで使うアドレスはどれか。IPv6(::1)は使えるか",
               &askPassiveMode},
      Question{"refusals", "4. サーバーが断ったとき、どの番号とどの文が返るか", &askRefusals},
      Question{"profile", "5. 設定ファイルの1つの値を書き換えたとき、ほかの行はそのまま残るか",
               &askProfileLines},
      Question{"icon", "6. タスクバーより先に起動しても、通知領域のアイコンは出るか", &askTrayIcon},
  };
  return kQuestions;
}

}  // namespace karvel
