#include "platform/windows/win32_text_field.h"

#include <commctrl.h>
#include <imm.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "platform/windows/wide_text.h"
#include "platform/windows/win32_text.h"

namespace karvel {
namespace {

constexpr UINT_PTR kSubclass = 1;
constexpr wchar_t kFirstPrintable = L' ';

DWORD styleOf(const Control& control) {
  const DWORD password = control.has(ControlRow::kPassword) ? ES_PASSWORD : 0;
  return ES_LEFT | ES_AUTOHSCROLL | password | tabStopOf(control);
}

/// Also the separators that other programs use for line ends.
bool breaksTheLine(char32_t character) {
  const bool control = character < kFirstPrintable || (character >= 0x7F && character < 0xA0);
  return control || character == 0x2028 || character == 0x2029;
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

Win32TextField::Win32TextField(Form& form, Control& control, HWND parent, WORD id)
    : Win32ControlWindow(control,
                         createChild(L"EDIT", styleOf(control), WS_EX_CLIENTEDGE, parent, id)),
      form_(form) {
  if (control.has(ControlRow::kPassword)) SendMessageW(handle(), EM_SETPASSWORDCHAR, L'*', 0);
  SendMessageW(handle(), EM_LIMITTEXT, static_cast<WPARAM>(control.row().maxLength), 0);
  if (control.row().inputMethod == InputMethod::kOff) ImmAssociateContext(handle(), nullptr);
  SetWindowSubclass(handle(), &subclassProc, kSubclass, reinterpret_cast<DWORD_PTR>(this));
}

Win32TextField::~Win32TextField() {
  RemoveWindowSubclass(handle(), &subclassProc, kSubclass);
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

LRESULT CALLBACK Win32TextField::subclassProc(HWND, UINT message, WPARAM first, LPARAM second,
                                              UINT_PTR, DWORD_PTR field) {
  return reinterpret_cast<Win32TextField*>(field)->handleMessage(message, first, second);
}

LRESULT Win32TextField::pass(UINT message, WPARAM first, LPARAM second) const {
  return DefSubclassProc(handle(), message, first, second);
}

LRESULT Win32TextField::handleMessage(UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_CHAR:
      return discards(first) ? 0 : pass(message, first, second);
    case WM_PASTE:
      paste();
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

bool Win32TextField::discards(WPARAM typed) const {
  // Editing keys arrive as control characters; half of a pair is no digit anyway.
  const auto character = static_cast<char32_t>(typed);
  return character >= kFirstPrintable && !form_.acceptsKey(control(), character);
}

void Win32TextField::paste() {
  const auto text = clipboardText(handle());
  if (!text) return;
  const std::wstring kept = accepted(*text);
  SendMessageW(handle(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(kept.c_str()));
}

/// What of the text may take the place of the selection.
std::wstring Win32TextField::accepted(const std::wstring& text) const {
  DWORD start = 0;
  DWORD end = 0;
  SendMessageW(handle(), EM_GETSEL, reinterpret_cast<WPARAM>(&start),
               reinterpret_cast<LPARAM>(&end));
  const auto staying = windowText(handle()).size() - (end - start);
  const auto limit = static_cast<std::size_t>(control().row().maxLength);
  std::size_t room = std::numeric_limits<std::size_t>::max();
  if (limit > 0) room = limit - std::min(limit, staying);

  std::wstring kept;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t units = utf16Index(text.substr(i, 2), 1);
    const char32_t character = units == 2 ? 0x10000U : text[i];  // a pair is no digit, no control
    const bool wanted = !breaksTheLine(character) && form_.acceptsKey(control(), character);
    if (wanted && units > room) break;
    if (wanted) {
      kept.append(text, i, units);
      room -= units;
    }
    i += units;
  }
  return kept;
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
  if (!std::exchange(focusedByClick_, false) || hasSelection()) return;
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

bool Win32TextField::hasSelection() const {
  const auto ends = static_cast<DWORD>(SendMessageW(handle(), EM_GETSEL, 0, 0));
  return LOWORD(ends) != HIWORD(ends);
}

}  // namespace karvel
