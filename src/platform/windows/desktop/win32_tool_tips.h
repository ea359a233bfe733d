#pragma once

#include <windows.h>

#include <string>

namespace karvel {

/// The tool tips of one window's children, disabled ones included. The window destroys them.
class Win32ToolTips {
 public:
  explicit Win32ToolTips(HWND window);

  /// Shows the text over the child from now on; an empty one shows nothing. To be called again
  /// when the child has moved.
  void set(HWND child, const std::wstring& text) const;

 private:
  HWND window_;
  HWND tips_;
};

}  // namespace karvel
