#pragma once

#include <windows.h>

#include <memory>

#include "form/form.h"

namespace karvel {

class Win32Look;

/// The window of one control: a user's action on it reaches the control, and sync() carries the
/// control's properties to it. Its parent destroys it.
class Win32ControlWindow {
 public:
  Win32ControlWindow(Control& control, HWND handle) : control_(control), handle_(handle) {}
  virtual ~Win32ControlWindow() = default;
  Win32ControlWindow(const Win32ControlWindow&) = delete;
  Win32ControlWindow& operator=(const Win32ControlWindow&) = delete;

  [[nodiscard]] Control& control() const { return control_; }
  [[nodiscard]] HWND handle() const { return handle_; }

  virtual void sync() = 0;
  /// A notification of WM_COMMAND.
  virtual void notify(WORD notification);
  /// WM_DRAWITEM of a window that leaves its drawing to its owner.
  virtual void draw(const DRAWITEMSTRUCT& item);
  /// Frames the button that Enter presses now.
  virtual void showDefault(bool isDefault);
  /// `place` is the row's rectangle, in pixels of the parent.
  virtual void moveTo(const RECT& place) const;
  /// Called when the window's fonts or colours have changed; `look` outlives the next call.
  virtual void applyLook(const Win32Look& look);
  /// The text that a tool tip shows, or an empty one.
  [[nodiscard]] virtual std::wstring toolTip() const;

 protected:
  void syncEnabled() const;

 private:
  Control& control_;
  HWND handle_;
};

/// Makes the window of a control as a child of the form's window, under the number `id`.
std::unique_ptr<Win32ControlWindow> makeControlWindow(Form& form, Control& control, HWND parent,
                                                      WORD id);

/// A child window of one of the system's classes.
HWND createChild(const wchar_t* className, DWORD style, DWORD extendedStyle, HWND parent, WORD id);

/// WS_TABSTOP when the keyboard is to reach the control.
DWORD tabStopOf(const Control& control);

}  // namespace karvel
