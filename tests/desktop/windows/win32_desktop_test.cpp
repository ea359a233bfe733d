#include <windows.h>

#include <shellapi.h>

#include "desktop/desktop_fixture.h"

namespace karvel {
namespace {

/// Stands in front of the taskbar and counts what programs tell it. As while it starts, it takes
/// none of the first messages.
class Taskbar {
 public:
  Taskbar() {
    WNDCLASSW description{};
    description.lpfnWndProc = [](HWND bar, UINT message, WPARAM first, LPARAM second) {
      if (message != WM_COPYDATA) return DefWindowProcW(bar, message, first, second);
      auto& self = *reinterpret_cast<Taskbar*>(GetWindowLongPtrW(bar, GWLP_USERDATA));
      const bool ready = ++self.told_ > kDeafFor;
      const auto action = reinterpret_cast<const COPYDATASTRUCT*>(second)->dwData;
      self.hasIcon_ = self.hasIcon_ || (ready && action == NIM_ADD);
      return LRESULT{self.hasIcon_};
    };
    description.lpszClassName = L"Shell_TrayWnd";
    RegisterClassW(&description);
    bar_ = CreateWindowExW(WS_EX_TOPMOST, L"Shell_TrayWnd", L"", WS_POPUP, 0, 0, 0, 0, nullptr,
                           nullptr, nullptr, nullptr);
    SetWindowLongPtrW(bar_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  }
  ~Taskbar() { DestroyWindow(bar_); }
  Taskbar(const Taskbar&) = delete;
  Taskbar& operator=(const Taskbar&) = delete;

  [[nodiscard]] int told() const { return told_; }

 private:
  static constexpr int kDeafFor = 3;
  HWND bar_;
  int told_ = 0;
  bool hasIcon_ = false;
};

HWND handle(Widget widget) {
  return reinterpret_cast<HWND>(widget);
}

HWND serviceWindow() {
  return FindWindowW(L"karvel.service", nullptr);
}

class Win32Tray : public ShownForm {
 protected:
  Win32Tray() {
    desktop_->addTrayIcon(form_, TrayImage::kNormal, "tip", [this] { onRightButtonUp_(); });
  }

  HWND owner() const { return handle(window()); }
  void report(UINT event) const {
    SendMessageW(owner(), WM_USER + 1, 10, static_cast<LPARAM>(event));
  }

  int asked_ = 0;
  std::function<void()> onRightButtonUp_ = [this] { ++asked_; };
};

TEST_F(Win32Tray, TheIconAnswersTheRightButtonAlone) {
  std::string pressed;
  logClicks("Button", pressed);
  user_.focus(field(0));
  for (const UINT event : {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK,
                           WM_RBUTTONDOWN, WM_CONTEXTMENU}) {
    report(event);
  }
  EXPECT_EQ(asked_, 0);
  EXPECT_EQ(LOWORD(SendMessageW(owner(), DM_GETDEFID, 0, 0)), GetDlgCtrlID(handle(button(0))));
  user_.press(Key::kEnter);
  EXPECT_EQ(pressed, "0") << "a report has the number of a dialog's message";
  report(WM_RBUTTONUP);
  EXPECT_EQ(asked_, 1);
  user_.useCloseBox(window());  // all else reaches the window's own procedure
  EXPECT_TRUE(form_.closed());
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

TEST_F(Win32Tray, ATaskbarIsAskedEverySecondUntilItIsReadyAndAgainWhenItIsANewOne) {
  desktop_->removeTrayIcon();
  const Taskbar taskbar;  // two messages a second: does it have the icon, and if not, take it
  desktop_->addTrayIcon(form_, TrayImage::kNormal, "tip", [] {});
  EXPECT_EQ(taskbar.told(), 1);
  for (int rounds = 0; taskbar.told() < 5 && rounds < 100; ++rounds) {
    wait(std::chrono::milliseconds(100));
  }
  wait(std::chrono::milliseconds(1200));
  EXPECT_EQ(taskbar.told(), 5);

  const UINT created = RegisterWindowMessageW(L"TaskbarCreated");
  SendMessageW(serviceWindow(), created, 0, 0);
  EXPECT_EQ(taskbar.told(), 6);
  desktop_->changeTrayIcon(TrayImage::kFailure, "tip");
  desktop_->removeTrayIcon();
  EXPECT_EQ(taskbar.told(), 8);
  SendMessageW(serviceWindow(), created, 0, 0);
  EXPECT_EQ(taskbar.told(), 8);
}

TEST_F(ShownForm, ACloseMessageToTheWindowThatNobodySeesIsAWishToEnd) {
  int asked = 0;
  desktop_->setEndSessionHandler([&] { ++asked; });
  SendMessageW(serviceWindow(), WM_CLOSE, 0, 0);
  EXPECT_EQ(asked, 1);
  EXPECT_NE(serviceWindow(), nullptr);
}

TEST_F(ShownForm, AStatusTextIsPaintedWithoutTheMessageLoop) {
  form_.control("Label1", 0).setCaption("1");
  EXPECT_EQ(GetUpdateRect(handle(widget("Label1", 0)), nullptr, FALSE), FALSE);
}

TEST_F(ShownForm, TheFolderDialogBeginsAtTheFolderThatIsGiven) {
  user_.soon([&] { user_.press(Key::kEnter); });
  EXPECT_EQ(desktop_->browseForFolder(form_, "title", "C:\\windows"), "C:\\windows");
}

TEST_F(ShownForm, AFieldIsAsHighAsItsTextNeedsAndStandsInTheMiddleOfItsRow) {
  for (const double factor : {1.0, 1.5, 2.0}) {
    user_.setTextSize(factor);
    RECT inside{};
    SendMessageW(handle(field(1)), EM_GETRECT, 0, reinterpret_cast<LPARAM>(&inside));
    MapWindowPoints(handle(field(1)), handle(window()), reinterpret_cast<POINT*>(&inside), 2);
    const double height = User::look(field(1)).needed.y - 4;
    const Rect& row = text(1).row().rect;
    EXPECT_NEAR(inside.top + height / 2, (row.y + row.height / 2.0) * height / 8, 1);
    EXPECT_LE(User::look(field(1)).place.height, 1.6 * height);
  }
}

TEST_F(ShownForm, TheWindowGrowsWithTheSystemsFont) {
  const int before = User::look(window()).place.width;
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  metrics.lfMessageFont.lfHeight *= 2;
  SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  SendMessageW(handle(window()), WM_SETTINGCHANGE, SPI_SETNONCLIENTMETRICS, 0);
  metrics.lfMessageFont.lfHeight /= 2;
  SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  const int after = User::look(window()).place.width;
  EXPECT_NEAR(after, 2 * before, 0.1 * after);
}

}  // namespace
}  // namespace karvel
