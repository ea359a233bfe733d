#include "platform/windows/desktop/win32_controls.h"

#include <commctrl.h>

#include <utility>

#include "form/keyboard.h"
#include "platform/windows/desktop/win32_text_field.h"
#include "platform/windows/system/wide_text.h"
#include "platform/windows/system/win32_module.h"

namespace karvel {
namespace {

class Button : public Win32Control {
 public:
  Button(Control& control, DWORD style, HWND parent, WORD id)
      : Win32Control(control, createChild(control, L"BUTTON", style | BS_NOTIFY, 0, parent, id)) {}

  void sync() override {
    Win32Control::sync();
    const std::wstring caption = literalCaption(control().caption());
    if (windowText(handle()) != caption) SetWindowTextW(handle(), caption.c_str());
  }

 protected:
  void setMark(bool marked) const {
    SendMessageW(handle(), BM_SETCHECK, marked ? BST_CHECKED : BST_UNCHECKED, 0);
  }
};

class PushButton final : public Button {
 public:
  PushButton(Control& control, HWND parent, WORD id) : Button(control, BS_PUSHBUTTON, parent, id) {}

  void notify(WORD notification) override {
    if (notification == BN_CLICKED) control().click();
  }

  void showDefault(bool isDefault) override {
    const LONG_PTR wanted = isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    if ((GetWindowLongPtrW(handle(), GWL_STYLE) & BS_TYPEMASK) == wanted) return;
    SendMessageW(handle(), BM_SETSTYLE, static_cast<WPARAM>(wanted), TRUE);
  }
};

class OptionButton final : public Button {
 public:
  OptionButton(const Form& form, Control& control, HWND parent, WORD id)
      : Button(control, BS_RADIOBUTTON, parent, id), form_(form) {}

  void sync() override {
    Button::sync();
    setMark(control().selected());
    const LONG_PTR style = GetWindowLongPtrW(handle(), GWL_STYLE);
    const LONG_PTR others = style & ~LONG_PTR{WS_TABSTOP};
    const LONG_PTR wanted = isTabStop(form_, control()) ? others | WS_TABSTOP : others;
    if (wanted != style) SetWindowLongPtrW(handle(), GWL_STYLE, wanted);
  }

  void notify(WORD notification) override {
    // An option that receives the focus says that it is clicked, too.
    if (notification == BN_CLICKED) control().click();
  }

 private:
  const Form& form_;
};

class CheckBox final : public Button {
 public:
  CheckBox(Control& control, HWND parent, WORD id) : Button(control, BS_AUTOCHECKBOX, parent, id) {}

  void sync() override {
    Button::sync();
    setMark(control().value() != 0);
  }

  void notify(WORD notification) override {
    if (notification != BN_CLICKED) return;
    control().setValue(SendMessageW(handle(), BM_GETCHECK, 0, 0) == BST_CHECKED ? 1 : 0);
  }
};

/// Plain, a section title (bold, on a band of its own) or a note (less prominent). The text is
/// wrapped and stands in the middle of its height; what is too long for its place can be read in
/// the tool tip.
class Label final : public Win32Control {
 public:
  Label(Control& control, HWND parent, WORD id)
      : Win32Control(control, createChild(control, L"STATIC", SS_OWNERDRAW, 0, parent, id)) {}

  void sync() override {
    Win32Control::sync();
    std::wstring wanted = toWide(control().caption());
    if (wanted == text_) return;
    text_ = std::move(wanted);
    SetWindowTextW(handle(), text_.c_str());  // for those who read the screen aloud
    InvalidateRect(handle(), nullptr, FALSE);
  }

  void applyLook(const Win32Look& look) override {
    look_ = &look;
    SendMessageW(handle(), WM_SETFONT, reinterpret_cast<WPARAM>(font()), TRUE);
  }

  void draw(const DRAWITEMSTRUCT& item) override;
  [[nodiscard]] std::wstring toolTip() const override;

 private:
  static constexpr UINT kFormat = DT_LEFT | DT_TOP | DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL;

  [[nodiscard]] bool isTitle() const { return control().has(ControlRow::kTitle); }
  [[nodiscard]] HFONT font() const { return isTitle() ? look_->titleFont() : look_->font(); }
  [[nodiscard]] COLORREF textColour() const;
  /// The place of the text, from its left edge on.
  [[nodiscard]] RECT textArea(HDC dc, const RECT& label) const;
  [[nodiscard]] int textHeight(HDC dc, RECT area) const;
  int drawText(HDC dc, RECT& area, UINT format) const {
    return DrawTextW(dc, text_.c_str(), static_cast<int>(text_.size()), &area, format);
  }

  const Win32Look* look_ = nullptr;
  std::wstring text_;
};

void Label::draw(const DRAWITEMSTRUCT& item) {
  if (look_ == nullptr) return;
  const HDC dc = item.hDC;
  const int saved = SaveDC(dc);
  SelectObject(dc, font());
  // The text's background fills the whole label.
  SetBkColor(dc, isTitle() ? Win32Look::titleBand() : Win32Look::background());
  ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &item.rcItem, nullptr, 0, nullptr);
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, textColour());

  RECT area = textArea(dc, item.rcItem);
  const int spare = static_cast<int>(area.bottom - area.top) - textHeight(dc, area);
  if (spare > 0) area.top += spare / 2;
  drawText(dc, area, kFormat);
  RestoreDC(dc, saved);
}

std::wstring Label::toolTip() const {
  if (look_ == nullptr) return {};
  RECT label{};
  GetClientRect(handle(), &label);
  const SelectedDc dc(handle(), font());
  const RECT area = textArea(dc.get(), label);
  const bool fits = textHeight(dc.get(), area) <= area.bottom - area.top;
  return fits ? Win32Control::toolTip() : text_;
}

COLORREF Label::textColour() const {
  if (!control().enabled()) return Win32Look::disabledText();
  return control().has(ControlRow::kNote) ? Win32Look::quietText() : Win32Look::text();
}

RECT Label::textArea(HDC dc, const RECT& label) const {
  RECT area = label;
  if (!isTitle()) return area;
  TEXTMETRICW metrics{};
  GetTextMetricsW(dc, &metrics);
  area.left += metrics.tmAveCharWidth / 2;
  return area;
}

int Label::textHeight(HDC dc, RECT area) const {
  return drawText(dc, area, kFormat | DT_CALCRECT);
}

/// A frame or a line.
class Decoration final : public Win32Control {
 public:
  Decoration(Control& control, DWORD style, HWND parent, WORD id)
      : Win32Control(control, createChild(control, L"STATIC", style, 0, parent, id)) {}
};

}  // namespace

void registerCommonControls() {
  constexpr const wchar_t* kLibrary = L"comctl32.dll";
  static const HMODULE library = LoadLibraryW(kLibrary);
  if (library == nullptr) return;
  const auto registerClasses =
      findFunction<BOOL WINAPI(const INITCOMMONCONTROLSEX*)>(kLibrary, "InitCommonControlsEx");
  const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES};
  if (registerClasses != nullptr) registerClasses(&classes);
}

std::unique_ptr<Win32Control> makeControl(const Form& form, Control& control, HWND parent,
                                          WORD id) {
  switch (control.row().kind) {
    case ControlKind::kLabel:
      return std::make_unique<Label>(control, parent, id);
    case ControlKind::kTextBox:
      return std::make_unique<Win32TextField>(control, parent, id);
    case ControlKind::kButton:
      return std::make_unique<PushButton>(control, parent, id);
    case ControlKind::kOptionButton:
      return std::make_unique<OptionButton>(form, control, parent, id);
    case ControlKind::kCheckBox:
      return std::make_unique<CheckBox>(control, parent, id);
    case ControlKind::kLine:
      return std::make_unique<Decoration>(control, SS_ETCHEDHORZ, parent, id);
    case ControlKind::kListBox:
    case ControlKind::kFrame:
      break;
  }
  return std::make_unique<Decoration>(control, SS_ETCHEDFRAME, parent, id);
}

}  // namespace karvel
