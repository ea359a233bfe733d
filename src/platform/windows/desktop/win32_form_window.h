#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "form/form.h"
#include "platform/desktop.h"
#include "platform/windows/desktop/win32_control_window.h"
#include "platform/windows/desktop/win32_gdi.h"
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
  /// Takes a message of this window or one of its children; false when it is to be dispatched as
  /// usual.
  bool translate(MSG& message);
  /// Tells the form which modifiers are held, if it is a message of a key.
  void preview(const MSG& message);

 private:
  static INT_PTR CALLBACK dialogProc(HWND window, UINT message, WPARAM first, LPARAM second);
  bool handleMessage(UINT message, WPARAM first, LPARAM second);
  void answer(Win32ControlWindow& child, WORD notification);
  bool draw(WORD id, const DRAWITEMSTRUCT& item) const;
  void changeResolution(UINT dpi, const RECT& suggested);
  void reportState();

  void addControls();
  void layOut();
  void resizeTo(int clientWidth, int clientHeight);
  void centre();
  void applyTopmost() const;
  void applyWindowState();
  void showInFront();
  void setIcons(Win32Icon small, Win32Icon big);

  void focus(HWND child) const;
  [[nodiscard]] Control* defaultButton(Control* focused) const;
  void showDefaultButton(Control& focused);
  bool pressDefaultButton(const MSG& message);
  bool moveWithinOptions(const MSG& message);
  void keepFocusOf(HWND disabled);
  void mendFocus();

  [[nodiscard]] Win32ControlWindow* find(const Control& control) const;
  [[nodiscard]] Win32ControlWindow* find(HWND child) const;

  Form& form_;
  HWND owner_;
  HWND handle_;
  UINT dpi_;
  Win32Icon smallIcon_;
  Win32Icon bigIcon_;
  std::unique_ptr<Win32Look> look_;
  std::unique_ptr<Win32ToolTips> toolTips_;
  std::vector<std::unique_ptr<Win32ControlWindow>> controls_;
  HWND lostFocus_ = nullptr;  ///< had the focus when it was disabled
};

}  // namespace karvel
