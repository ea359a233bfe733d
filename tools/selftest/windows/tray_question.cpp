#include <windows.h>

#include <shellapi.h>

#include <array>
#include <cstdio>
#include <optional>
#include <thread>

#include "form/control_rows.h"
#include "platform/windows/desktop/win32_desktop.h"
#include "platform/windows/desktop/win32_tray_icon.h"
#include "platform/windows/system/wide_text.h"
#include "selftest/windows/questions.h"

namespace karvel {
namespace {

using std::chrono::milliseconds;
using SteadyClock = std::chrono::steady_clock;

constexpr milliseconds kPatience{5000};
constexpr milliseconds kSignInPatience{120'000};
constexpr milliseconds kSlice{20};

constexpr std::array kControls{rows::label(0, "自己試験", {8, 8, 100, 10})};
constexpr FormTable kTable{"SelftestForm", "karvel-selftest", 120, 30, true, kControls};

std::string seconds(milliseconds time) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.2f秒", static_cast<double>(time.count()) / 1000);
  return text.data();
}

milliseconds since(SteadyClock::time_point begin) {
  return std::chrono::duration_cast<milliseconds>(SteadyClock::now() - begin);
}

bool hasTaskbar() {
  return FindWindowW(L"Shell_TrayWnd", nullptr) != nullptr;
}

/// The program's own desktop with its icon.
class Icon {
 public:
  Icon() { desktop_.bind(form_); }
  ~Icon() { desktop_.release(form_); }
  Icon(const Icon&) = delete;
  Icon& operator=(const Icon&) = delete;

  void add() {
    desktop_.addTrayIcon(form_, TrayImage::kNormal, "karvel-selftest", [] {});
  }
  /// Behind the program's back, as a taskbar that is started anew.
  bool takeAway() const { return notify(NIM_DELETE); }
  /// The taskbar knows it.
  [[nodiscard]] bool isThere() const { return notify(NIM_MODIFY); }

  /// How long it takes until it is there; empty when it does not come.
  std::optional<milliseconds> waitUntilThere(milliseconds patience) {
    const auto begin = SteadyClock::now();
    while (since(begin) < patience) {
      desktop_.processPendingMessages();
      if (isThere()) return since(begin);
      std::this_thread::sleep_for(kSlice);
    }
    return std::nullopt;
  }

  /// What a new taskbar broadcasts, to this program alone.
  static void announceTaskbar() {
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM) -> BOOL {
          PostMessageW(window, RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
          return TRUE;
        },
        0);
  }

 private:
  [[nodiscard]] bool notify(DWORD action) const {
    NOTIFYICONDATAW data{};
    data.cbSize = sizeof data;
    data.hWnd = FindWindowW(L"#32770", toWide(form_.caption()).c_str());
    data.uID = Win32TrayIcon::kIdentifier;
    return Shell_NotifyIconW(action, &data) != FALSE;
  }

  Win32Desktop desktop_;
  Form form_{kTable};
};

std::string textOf(const std::optional<milliseconds>& time) {
  return time ? seconds(*time) + "で出た" : "出なかった";
}

/// On a desktop of its own that has no taskbar, as a user's has none early in a sign-in.
void tryWithoutTaskbar(const Note& note) {
  HDESK bare = CreateDesktopW(L"karvel-selftest", nullptr, nullptr, 0, GENERIC_ALL, nullptr);
  if (bare == nullptr || SetThreadDesktop(bare) == FALSE) {
    note("タスクバーのないデスクトップを作れない(エラー" + std::to_string(GetLastError()) + ")");
    return;
  }
  {
    note(std::string("別のデスクトップ: タスクバー ") + (hasTaskbar() ? "あり" : "なし"));
    Icon icon;
    const auto begin = SteadyClock::now();
    icon.add();
    note("NIM_ADDから戻るまで " + seconds(since(begin)));
    note("アイコンは " + textOf(icon.waitUntilThere(kPatience / 2)) + "(プログラムは待ち続ける)");
  }
  CloseDesktop(bare);
}

}  // namespace

std::string askTrayIcon(const Note& note, milliseconds /*limit*/) {
  std::thread(tryWithoutTaskbar, std::cref(note)).join();
  note(std::string("今のデスクトップ: タスクバー ") + (hasTaskbar() ? "あり" : "なし"));
  if (!hasTaskbar()) return "ここにはタスクバーがないので、確かめられません。";
  Icon icon;
  icon.add();
  const auto first = icon.waitUntilThere(kPatience);
  note("アイコンは " + textOf(first));
  const bool taken = icon.takeAway();
  note(std::string("外から消した: ") + (taken && !icon.isThere() ? "消えた" : "消えない"));
  Icon::announceTaskbar();
  const auto again = icon.waitUntilThere(kPatience);
  note("TaskbarCreatedのあと " + textOf(again));
  if (!first) return "通知領域のアイコンが出ません。";
  return taken && again ? "タスクバーが新しくできると、アイコンはまた出ます。サインインのときにど"
                          "うなるかは、karvel-selftest --after-sign-in で確かめられます。"
                        : "タスクバーが新しくできても、アイコンは出ません。";
}

std::string askTrayIconAtSignIn(const Note& note, milliseconds /*limit*/) {
  const auto begin = SteadyClock::now();
  note(std::string("起動したとき: タスクバー ") + (hasTaskbar() ? "あり" : "なし"));
  Icon icon;
  icon.add();
  const auto time = icon.waitUntilThere(kSignInPatience);
  note("アイコンは " + textOf(time) + "(起動から " + seconds(since(begin)) + ")");
  return time ? "サインインのあと、アイコンは" + seconds(*time) + "で出ました。"
              : "サインインのあと、アイコンは" + seconds(kSignInPatience) + "待っても出ません。";
}

}  // namespace karvel
