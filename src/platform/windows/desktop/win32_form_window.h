#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "form/keyboard.h"
#include "platform/desktop.h"
#include "platform/windows/desktop/win32_control.h"
#include "platform/windows/desktop/win32_look.h"
#include "platform/windows/desktop/win32_tool_tips.h"

namespace karvel {

/// The window of a form, hidden until the form is visible. Its controls are made when it is first
/// shown, so a program that stays in the notification area has none. A hidden control has no
/// window: it holds values and is never seen.
class Win32FormWindow final : public FormView {
 public:
  /// `owner` is the window that a dialog stands above, or nullptr.
  Win32FormWindow(Form& form, HWND owner);
  ~Win32FormWindow() override;
  Win32FormWindow(const Win32FormWindow&) = delete;
  Win32FormWindow& operator=(const Win32FormWindow&) = delete;

  void formChanged() override;
  void controlChanged(Control& control) override;

  [[nodiscard]] HWND handle() const { return handle_; }
  /// Makes a tray image the window's own icon.
  void setImage(TrayImage image);
  /// Shows the wait cursor or the usual one.
  void setBusy(bool busy);

  /// Tells the form which modifiers are held, if it is a message of a key. The form's handler may
  /// end the life of this object.
  void preview(const MSG& message);
  /// Takes a message of this window or one of its children; false when it is to be dispatched as
  /// usual. The form's handlers may end the life of this object.
  bool translate(MSG& message);

 private:
  static INT_PTR CALLBACK dialogProc(HWND window, UINT message, WPARAM first, LPARAM second);
  bool handleMessage(UINT message, WPARAM first, LPARAM second);
  void answer(Win32Control& child, WORD notification);
  bool draw(WORD id, const DRAWITEMSTRUCT& item) const;
  void changeResolution(UINT dpi, const RECT& suggested);
  void reportState();
  [[nodiscard]] bool showWaitCursor() const;

  void addControls();
  void layOut();
  void resizeTo(int clientWidth, int clientHeight);
  void moveToFirstPlace();
  void applyTopmost() const;
  void applyWindowState();
  void showInFront();
  void setIcons(Win32Icon small, Win32Icon big);

  bool answerKey(const MSG& message);
  bool moveWithinOptions(const MSG& message);
  void showDefaultButton();
  void focus(const Control& control) const;
  [[nodiscard]] Control* focused() const;

  [[nodiscard]] Win32Control* find(const Control& control) const;
  [[nodiscard]] Win32Control* find(HWND child) const;

  Form& form_;
  HWND owner_;
  HWND handle_;
  UINT dpi_;
  Win32Icon smallIcon_;
  Win32Icon bigIcon_;
  std::unique_ptr<Win32Look> look_;
  std::unique_ptr<Win32ToolTips> toolTips_;
  std::vector<std::unique_ptr<Win32Control>> controls_;
  FocusKeeper focusKeeper_;
  bool busy_ = false;
};

}  // namespace karvel
