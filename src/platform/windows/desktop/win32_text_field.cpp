#include "platform/windows/desktop/win32_text_field.h"

#include <imm.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "form/text_entry.h"
#include "platform/windows/desktop/win32_gdi.h"
#include "platform/windows/desktop/win32_text.h"
#include "platform/windows/system/wide_text.h"

namespace karvel {
namespace {

constexpr wchar_t kFirstPrintable = L' ';

HWND createField(const Control& control, HWND parent, WORD id) {
  // Readers of the screen call a field what the text right before it says, shown or not.
  const HWND name = createChild(L"STATIC", SS_NOPREFIX, 0, parent, 0);
  SetWindowTextW(name, toWide(control.row().accessibleName).c_str());
  ShowWindow(name, SW_HIDE);
  const DWORD password = control.has(ControlRow::kPassword) ? ES_PASSWORD : 0;
  return createChild(L"EDIT", ES_LEFT | ES_AUTOHSCROLL | password | tabStopOf(control),
                     WS_EX_CLIENTEDGE, parent, id);
}

std::optional<std::wstring> clipboardText(HWND reader) {
  if (OpenClipboard(reader) == FALSE) return std::nullopt;
  std::optional<std::wstring> text;
  if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
    if (const auto* units = static_cast<const wchar_t*>(GlobalLock(data))) {
      const std::size_t size = GlobalSize(data) / sizeof(wchar_t);
      text.emplace(units, std::find(units, units + size, L'\0'));
      GlobalUnlock(data);
    }
  }
  CloseClipboard();
  return text;
}

}  // namespace

Win32TextField::Win32TextField(Control& control, HWND parent, WORD id)
    : Win32ControlWindow(control, createField(control, parent, id)) {
  if (control.has(ControlRow::kPassword)) SendMessageW(handle(), EM_SETPASSWORDCHAR, L'*', 0);
  SendMessageW(handle(), EM_LIMITTEXT, 0, 0);  // it would count UTF-16 units
  if (control.row().inputMethod == InputMethod::kOff) ImmAssociateContext(handle(), nullptr);
  SetWindowLongPtrW(handle(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  previousProc_ = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(handle(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&fieldProc)));
}

Win32TextField::~Win32TextField() {
  SetWindowLongPtrW(handle(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(previousProc_));
}

void Win32TextField::sync() {
  syncEnabled();
  const std::wstring wanted = toWide(control().text());
  if (windowText(handle()) != wanted) {
    syncing_ = true;
    SetWindowTextW(handle(), wanted.c_str());
    syncing_ = false;
  }
  syncSelection();
}

void Win32TextField::notify(WORD notification) {
  if (notification == EN_CHANGE && !syncing_) control().setText(fromWide(windowText(handle())));
}

void Win32TextField::moveTo(const RECT& place) const {
  Win32ControlWindow::moveTo(place);
  // The system draws the text at the top of whatever height a field has: so the field is given the
  // height that its text needs, with the text in the middle of the place.
  RECT whole{};
  GetWindowRect(handle(), &whole);
  RECT inside{};
  SendMessageW(handle(), EM_GETRECT, 0, reinterpret_cast<LPARAM>(&inside));
  POINT corner{inside.left, inside.top};
  ClientToScreen(handle(), &corner);
  TEXTMETRICW font{};
  const auto used = reinterpret_cast<HFONT>(SendMessageW(handle(), WM_GETFONT, 0, 0));
  GetTextMetricsW(SelectedDc(handle(), used).get(), &font);

  const LONG above = corner.y - whole.top;
  const LONG height =
      std::min(font.tmHeight + 2 * above + font.tmHeight / 8, place.bottom - place.top);
  RECT own = place;
  own.top = (place.top + place.bottom - font.tmHeight) / 2 - above;
  own.bottom = own.top + height;
  Win32ControlWindow::moveTo(own);
}

LRESULT CALLBACK Win32TextField::fieldProc(HWND window, UINT message, WPARAM first, LPARAM second) {
  auto* self = reinterpret_cast<Win32TextField*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  return self->handleMessage(message, first, second);
}

LRESULT Win32TextField::pass(UINT message, WPARAM first, LPARAM second) const {
  return CallWindowProcW(previousProc_, handle(), message, first, second);
}

LRESULT Win32TextField::handleMessage(UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_CHAR:
      return type(first, second);
    case WM_PASTE:
      if (const auto text = clipboardText(handle())) insert(*text);
      return 0;
    case WM_KILLFOCUS:
      keptFocus_ = IsChild(GetParent(handle()), reinterpret_cast<HWND>(first)) == FALSE;
      return pass(message, first, second);
    case WM_SETFOCUS: {
      const LRESULT result = pass(message, first, second);
      receiveFocus();
      return result;
    }
    case WM_LBUTTONDOWN: {
      focusedByClick_ = GetFocus() != handle();
      return pass(message, first, second);
    }
    case WM_LBUTTONUP: {
      const LRESULT result = pass(message, first, second);
      finishClick();
      return result;
    }
    default:
      return pass(message, first, second);
  }
}

LRESULT Win32TextField::type(WPARAM typed, LPARAM repeats) {
  const auto unit = static_cast<wchar_t>(typed);
  const wchar_t first = std::exchange(firstOfPair_, L'\0');
  // Editing keys arrive as control characters.
  if (unit < kFirstPrintable) return pass(WM_CHAR, typed, repeats);
  if (IS_HIGH_SURROGATE(unit)) {
    firstOfPair_ = unit;
  } else if (IS_SURROGATE_PAIR(first, unit)) {
    insert({first, unit});  // at once: half a character is no text
  } else if (!accepted({unit}).empty()) {
    return pass(WM_CHAR, typed, repeats);
  }
  return 0;
}

void Win32TextField::insert(const std::wstring& text) {
  const std::wstring kept = accepted(text);
  if (kept.empty()) return;
  SendMessageW(handle(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(kept.c_str()));
}

/// What of the text may take the place of the selection.
std::wstring Win32TextField::accepted(const std::wstring& text) const {
  const auto [start, end] = selection();
  const std::size_t staying = characterCount(windowText(handle()).erase(start, end - start));
  return toWide(acceptedInsertion(control().row(), fromWide(text), staying));
}

void Win32TextField::receiveFocus() {
  prepareInputMethod();
  if (std::exchange(keptFocus_, false)) return;
  selectionRequested_ = true;
  control().focus();
  selectionRequested_ = false;
}

void Win32TextField::prepareInputMethod() const {
  if (control().row().inputMethod != InputMethod::kHiragana) return;
  const HIMC context = ImmGetContext(handle());
  if (context == nullptr) return;
  DWORD conversion = 0;
  DWORD sentence = 0;
  ImmGetConversionStatus(context, &conversion, &sentence);
  ImmSetOpenStatus(context, TRUE);
  ImmSetConversionStatus(context, IME_CMODE_NATIVE | IME_CMODE_FULLSHAPE, sentence);
  ImmReleaseContext(handle(), context);
}

/// The click that brings the focus places the caret; what was selected at that moment comes back
/// unless the user has selected something with the mouse.
void Win32TextField::finishClick() {
  const auto [start, end] = selection();
  if (!std::exchange(focusedByClick_, false) || start != end) return;
  select(selectionStart_, selectionLength_);
}

void Win32TextField::syncSelection() {
  // Other changes of the control must not disturb what the user has selected meanwhile.
  const bool same = control().selectionStart() == selectionStart_ &&
                    control().selectionLength() == selectionLength_;
  if (same && !selectionRequested_) return;
  selectionStart_ = control().selectionStart();
  selectionLength_ = control().selectionLength();
  select(selectionStart_, selectionLength_);
}

void Win32TextField::select(std::size_t start, std::size_t length) const {
  const std::wstring text = windowText(handle());
  SendMessageW(handle(), EM_SETSEL, utf16Index(text, start),
               static_cast<LPARAM>(utf16Index(text, start + length)));
}

std::pair<DWORD, DWORD> Win32TextField::selection() const {
  DWORD start = 0;
  DWORD end = 0;
  SendMessageW(handle(), EM_GETSEL, reinterpret_cast<WPARAM>(&start),
               reinterpret_cast<LPARAM>(&end));
  return {start, end};
}

}  // namespace karvel
