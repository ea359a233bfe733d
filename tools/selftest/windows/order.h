#pragma once

#include <string>
#include <vector>

namespace karvel {

/// What the command line asks for.
struct Order {
  std::string ask;  ///< a question's name: this process answers it and does nothing else
  std::string report;
  bool quick = false;
  bool open = false;
  bool afterSignIn = false;
  bool signedIn = false;
  bool wrong = false;
};

inline constexpr const char* kUsage =
    "karvel-selftest [--quick] [--report ファイル.html] [--open]\n"
    "  --quick   時間のかかる試験(転送の障害)を省き、時間の制限を短くします\n"
    "  --report  結果のファイル(省略すると、このプログラムの横)\n"
    "  --open    結果を開きます\n"
    "karvel-selftest --after-sign-in\n"
    "  次のサインインのときに、通知領域のアイコンが出るかを確かめます\n";

Order orderOf(const std::vector<std::string>& arguments);

}  // namespace karvel
