#pragma once

#include <string>

#include "platform/windows/desktop/win32_control_window.h"

namespace karvel {

/// A label: plain, a section title (bold, on a band of its own) or a note (less prominent). Its
/// text is wrapped and stands in the middle of its height; what is too long for its place can be
/// read in the tool tip.
class Win32Label final : public Win32ControlWindow {
 public:
  Win32Label(Control& control, HWND parent, WORD id);
  void sync() override;
  void draw(const DRAWITEMSTRUCT& item) override;
  void applyLook(const Win32Look& look) override;
  [[nodiscard]] std::wstring toolTip() const override;

 private:
  [[nodiscard]] HFONT font() const;
  [[nodiscard]] COLORREF textColour() const;
  [[nodiscard]] COLORREF background() const;
  /// The place of the text, from its left edge on.
  [[nodiscard]] RECT textArea(HDC dc, const RECT& label) const;
  [[nodiscard]] int textHeight(HDC dc, RECT area) const;

  const Win32Look* look_ = nullptr;
  std::wstring text_;
};

}  // namespace karvel
