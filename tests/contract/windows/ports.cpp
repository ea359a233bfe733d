#include "contract/ports.h"

#include <iostream>

#include "platform/windows/internet/wininet_internet.h"
#include "platform/windows/system/user_instance.h"
#include "platform/windows/system/win32_files.h"
#include "platform/windows/system/win32_profile.h"

namespace karvel {
namespace {

// By Difference.
constexpr const char* kDifferences[] = {
    "FTPの時間の制限が守られない",      "複数行の返事のうち、最後の行だけが返る",
    "接続が切れたときの番号が違う",     "転送のとき、決まった数より多くの命令を送る",
    "IPv6のアドレスに接続できない",     "Shift-JISにない名前の文字が変わる",
    "一覧の名前が空白で切れる",         "今のフォルダの名前が引用符で切れる",
    "入力システム(IME)がない",          "メニューがすぐには閉じない",
    "接続したときの返事の番号を見ない",
};

}  // namespace

std::unique_ptr<Files> makeFiles() {
  return std::make_unique<Win32Files>();
}

std::unique_ptr<Profile> makeProfile() {
  return std::make_unique<Win32Profile>();
}

std::unique_ptr<Instance> makeInstance() {
  return std::make_unique<UserInstance>();
}

std::unique_ptr<Internet> makeInternet(const std::uint32_t& longestLimit) {
  return std::make_unique<ImpatientInternet<WininetInternet>>(longestLimit);
}

bool isKnown(Difference difference) {
  const std::string name = kDifferences[static_cast<std::size_t>(difference)];
  std::cout << "[ DIFFERS  ] " + name + "\n" << std::flush;
  return true;
}

}  // namespace karvel
