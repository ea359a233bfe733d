#pragma once

#include <windows.h>

#include <string>

#include "form/form.h"
#include "platform/windows/desktop/win32_look.h"

namespace karvel {

/// The window of one control: a user's action on it reaches the control, and sync() carries the
/// control's properties to it. Its parent destroys it.
class Win32Control {
 public:
  Win32Control(Control& control, HWND handle) : control_(control), handle_(handle) {}
  virtual ~Win32Control() = default;
  Win32Control(const Win32Control&) = delete;
  Win32Control& operator=(const Win32Control&) = delete;

  [[nodiscard]] Control& control() const { return control_; }
  [[nodiscard]] HWND handle() const { return handle_; }

  /// What every kind of window shows alike: here whether it is enabled.
  virtual void sync();
  /// A notification of WM_COMMAND. The control's handler may end the life of this object.
  virtual void notify(WORD) {}
  /// WM_DRAWITEM of a window that leaves its drawing to its owner.
  virtual void draw(const DRAWITEMSTRUCT&) {}
  /// Frames the button that Enter presses now.
  virtual void showDefault(bool) {}
  /// Called when the window's fonts or colours have changed; `look` outlives the next call.
  virtual void applyLook(const Win32Look& look);
  /// `place` is where the row says, in pixels of the parent.
  virtual void moveTo(const PixelRect& place) const;
  /// The text that a tool tip shows, or an empty one.
  [[nodiscard]] virtual std::wstring toolTip() const;

 private:
  Control& control_;
  HWND handle_;
};

/// A child window of one of the system's classes, which the keyboard reaches if the row says so.
[[nodiscard]] HWND createChild(const Control& control, const wchar_t* className, DWORD style,
                               DWORD extendedStyle, HWND parent, WORD id);

[[nodiscard]] std::wstring windowText(HWND window);

/// A caption for places that underline the character after "&": shown letter for letter.
[[nodiscard]] std::wstring literalCaption(const std::string& caption);

}  // namespace karvel
