#include "platform/windows/desktop/win32_label.h"

#include "platform/windows/desktop/win32_gdi.h"
#include "platform/windows/desktop/win32_look.h"
#include "platform/windows/system/wide_text.h"

namespace karvel {
namespace {

constexpr UINT kFormat = DT_LEFT | DT_TOP | DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL;

int lengthOf(const std::wstring& text) {
  return static_cast<int>(text.size());
}

}  // namespace

Win32Label::Win32Label(Control& control, HWND parent, WORD id)
    : Win32ControlWindow(control, createChild(L"STATIC", SS_OWNERDRAW, 0, parent, id)) {
}

void Win32Label::sync() {
  syncEnabled();
  std::wstring wanted = toWide(control().caption());
  if (wanted == text_) return;
  text_ = std::move(wanted);
  SetWindowTextW(handle(), text_.c_str());  // for those who read the screen aloud
  InvalidateRect(handle(), nullptr, FALSE);
}

void Win32Label::applyLook(const Win32Look& look) {
  look_ = &look;
  SendMessageW(handle(), WM_SETFONT, reinterpret_cast<WPARAM>(font()), TRUE);
}

void Win32Label::draw(const DRAWITEMSTRUCT& item) {
  if (look_ == nullptr) return;
  const HDC dc = item.hDC;
  const int saved = SaveDC(dc);
  SelectObject(dc, font());
  // The text's background fills the whole label.
  SetBkColor(dc, background());
  ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &item.rcItem, nullptr, 0, nullptr);
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, textColour());

  RECT area = textArea(dc, item.rcItem);
  const int spare = static_cast<int>(area.bottom - area.top) - textHeight(dc, area);
  if (spare > 0) area.top += spare / 2;
  DrawTextW(dc, text_.c_str(), lengthOf(text_), &area, kFormat);
  RestoreDC(dc, saved);
}

std::wstring Win32Label::toolTip() const {
  if (look_ == nullptr) return {};
  RECT label{};
  GetClientRect(handle(), &label);
  const SelectedDc dc(handle(), font());
  const RECT area = textArea(dc.get(), label);
  const bool fits = textHeight(dc.get(), area) <= area.bottom - area.top;
  return fits ? Win32ControlWindow::toolTip() : text_;
}

HFONT Win32Label::font() const {
  return control().has(ControlRow::kTitle) ? look_->titleFont() : look_->font();
}

COLORREF Win32Label::textColour() const {
  if (!control().enabled()) return Win32Look::disabledText();
  return control().has(ControlRow::kNote) ? Win32Look::quietText() : Win32Look::text();
}

COLORREF Win32Label::background() const {
  return control().has(ControlRow::kTitle) ? Win32Look::titleBand() : Win32Look::background();
}

RECT Win32Label::textArea(HDC dc, const RECT& label) const {
  RECT area = label;
  if (!control().has(ControlRow::kTitle)) return area;
  TEXTMETRICW metrics{};
  GetTextMetricsW(dc, &metrics);
  area.left += metrics.tmAveCharWidth / 2;
  return area;
}

int Win32Label::textHeight(HDC dc, RECT area) const {
  return DrawTextW(dc, text_.c_str(), lengthOf(text_), &area, kFormat | DT_CALCRECT);
}

}  // namespace karvel
