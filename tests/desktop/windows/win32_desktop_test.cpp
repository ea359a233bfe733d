#include <windows.h>

#include "desktop/desktop_fixture.h"

namespace karvel {
namespace {

/// Stands in front of the taskbar and counts what programs tell it.
class Taskbar {
 public:
  Taskbar() {
    WNDCLASSW description{};
    description.lpfnWndProc = [](HWND window, UINT message, WPARAM first, LPARAM second) {
      if (message == WM_COPYDATA)
        ++*reinterpret_cast<int*>(GetWindowLongPtrW(window, GWLP_USERDATA));
      return DefWindowProcW(window, message, first, second);
    };
    description.lpszClassName = L"Shell_TrayWnd";
    RegisterClassW(&description);
    handle_ = CreateWindowExW(WS_EX_TOPMOST, L"Shell_TrayWnd", L"", WS_POPUP, 0, 0, 0, 0, nullptr,
                              nullptr, nullptr, nullptr);
    SetWindowLongPtrW(handle_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&told_));
  }
  ~Taskbar() { DestroyWindow(handle_); }
  Taskbar(const Taskbar&) = delete;
  Taskbar& operator=(const Taskbar&) = delete;

  [[nodiscard]] int told() const { return told_; }

 private:
  HWND handle_;
  int told_ = 0;
};

class Win32Tray : public DesktopTest {
 protected:
  Win32Tray() {
    show(form_);
    desktop_->addTrayIcon(form_, TrayImage::kNormal, "tip", [this] { onRightButtonUp_(); });
  }

  HWND owner() const { return reinterpret_cast<HWND>(window()); }
  void report(UINT event) const {
    SendMessageW(owner(), WM_USER + 1, 10, static_cast<LPARAM>(event));
  }

  int asked_ = 0;
  std::function<void()> onRightButtonUp_ = [this] { ++asked_; };
};

TEST_F(Win32Tray, TheIconAnswersTheRightButtonAlone) {
  for (const UINT event : {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK,
                           WM_RBUTTONDOWN, WM_CONTEXTMENU}) {
    report(event);
  }
  EXPECT_EQ(asked_, 0);
  report(WM_RBUTTONUP);
  EXPECT_EQ(asked_, 1);
  user_.useCloseBox(window());  // all else reaches the window's own procedure
  EXPECT_TRUE(form_.closed());
}

TEST_F(Win32Tray, TheIconWaitsForTheAnswerToAMessage) {
  user_.soon([&] {
    report(WM_RBUTTONUP);
    user_.press(Key::kEnter);
  });
  desktop_->messageBox(form_, "t", "t");
  EXPECT_EQ(asked_, 0);
}

TEST_F(Win32Tray, TheHandlerMayRemoveTheIconAndTheWindowHasItsProcedureBack) {
  const auto installed = GetWindowLongPtrW(owner(), GWLP_WNDPROC);
  onRightButtonUp_ = [this] {
    ++asked_;
    desktop_->removeTrayIcon();
  };
  report(WM_RBUTTONUP);
  report(WM_RBUTTONUP);
  EXPECT_EQ(asked_, 1);
  EXPECT_NE(GetWindowLongPtrW(owner(), GWLP_WNDPROC), installed);
}

TEST_F(Win32Tray, ANewTaskbarIsGivenTheIconAgain) {
  const Taskbar taskbar;
  const HWND service = FindWindowW(L"karvel.service", nullptr);
  const UINT created = RegisterWindowMessageW(L"TaskbarCreated");
  SendMessageW(service, created, 0, 0);
  EXPECT_EQ(taskbar.told(), 1);
  desktop_->changeTrayIcon(TrayImage::kFailure, "tip");
  desktop_->removeTrayIcon();
  EXPECT_EQ(taskbar.told(), 3);
  SendMessageW(service, created, 0, 0);
  EXPECT_EQ(taskbar.told(), 3);
}

void setSystemFonts(NONCLIENTMETRICSW metrics, LONG factor) {
  metrics.lfMessageFont.lfHeight *= factor;
  SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
}

TEST_F(DesktopTest, TheWindowGrowsWithTheSystemsFont) {
  show(form_);
  const int before = User::place(window()).size().width;
  NONCLIENTMETRICSW usual{};
  usual.cbSize = sizeof usual;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof usual, &usual, 0);
  setSystemFonts(usual, 2);
  SendMessageW(reinterpret_cast<HWND>(window()), WM_SETTINGCHANGE, SPI_SETNONCLIENTMETRICS, 0);
  setSystemFonts(usual, 1);
  const int after = User::place(window()).size().width;
  EXPECT_NEAR(after, 2 * before, 0.1 * after);
}

}  // namespace
}  // namespace karvel
