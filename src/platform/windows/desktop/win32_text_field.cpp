#include "platform/windows/desktop/win32_text_field.h"

#include <imm.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/windows/system/wide_text.h"
#include "text/strings.h"

namespace karvel {
namespace {

constexpr wchar_t kFirstPrintable = L' ';

HWND createField(const Control& control, HWND parent, WORD id) {
  // Readers of the screen call a field what the text right before it says, shown or not.
  CreateWindowExW(0, L"STATIC", toWide(control.row().accessibleName).c_str(),
                  WS_CHILD | SS_NOPREFIX, 0, 0, 0, 0, parent, nullptr, GetModuleHandleW(nullptr),
                  nullptr);
  const DWORD password = control.has(ControlRow::kPassword) ? ES_PASSWORD : 0;
  return createChild(control, L"EDIT", ES_LEFT | ES_AUTOHSCROLL | password, WS_EX_CLIENTEDGE,
                     parent, id);
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

LONG fontHeight(HWND window) {
  const SelectedDc dc(window, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
  TEXTMETRICW metrics{};
  GetTextMetricsW(dc.get(), &metrics);
  return metrics.tmHeight;
}

/// From the upper edge of a field to its text.
LONG heightAboveText(HWND field) {
  RECT whole{};
  GetWindowRect(field, &whole);
  RECT text{};
  SendMessageW(field, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&text));
  POINT corner{text.left, text.top};
  ClientToScreen(field, &corner);
  return corner.y - whole.top;
}

}  // namespace

Win32TextField::Win32TextField(Control& control, HWND parent, WORD id)
    : Win32Control(control, createField(control, parent, id)), focus_(control) {
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
  Win32Control::sync();
  const std::wstring wanted = toWide(control().text());
  if (windowText(handle()) != wanted) {
    syncing_ = true;
    SetWindowTextW(handle(), wanted.c_str());
    syncing_ = false;
  }
  if (control().takeSelectionRequest()) {
    select(control().selectionStart(), control().selectionLength());
  }
}

void Win32TextField::notify(WORD notification) {
  if (notification == EN_CHANGE && !syncing_) control().setText(fromWide(windowText(handle())));
}

void Win32TextField::moveTo(const PixelRect& place) const {
  Win32Control::moveTo(place);
  // The system draws the text at the top of whatever height a field has. So the field becomes as
  // high as in the system's own dialogs, with the text in the middle of the place.
  const auto text = static_cast<int>(fontHeight(handle()));
  const auto above = static_cast<int>(heightAboveText(handle()));
  const int height = std::min(text + 2 * above + text / 8, place.height);
  const int top = place.top + (place.height - text) / 2 - above;
  Win32Control::moveTo({place.left, top, place.width, height});
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
      focus_.leave(IsChild(GetParent(handle()), reinterpret_cast<HWND>(first)) == FALSE);
      return pass(message, first, second);
    case WM_SETFOCUS: {
      const LRESULT result = pass(message, first, second);
      prepareInputMethod();
      focus_.arrive(std::exchange(focusedByClick_, false));
      return result;
    }
    case WM_LBUTTONDOWN:
      focusedByClick_ = GetFocus() != handle();  // as it is about to be
      return pass(message, first, second);
    case WM_LBUTTONUP: {
      const LRESULT result = pass(message, first, second);
      const auto [start, end] = selection();
      focus_.endClick(start != end);
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

void Win32TextField::insert(const std::wstring& text) const {
  const std::wstring kept = accepted(text);
  if (kept.empty()) return;
  SendMessageW(handle(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(kept.c_str()));
}

std::wstring Win32TextField::accepted(const std::wstring& text) const {
  const auto [start, end] = selection();
  const std::wstring staying = windowText(handle()).erase(start, end - start);
  return toWide(
      acceptedInsertion(control().row(), fromWide(text), characterCount(fromWide(staying))));
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

void Win32TextField::select(std::size_t start, std::size_t length) const {
  const std::string text = fromWide(windowText(handle()));
  const std::string_view before = firstCharacters(text, start);
  const std::string_view selected =
      firstCharacters(std::string_view(text).substr(before.size()), length);
  const std::size_t from = toWide(before).size();
  SendMessageW(handle(), EM_SETSEL, from, static_cast<LPARAM>(from + toWide(selected).size()));
}

Win32TextField::Span Win32TextField::selection() const {
  Span span;
  SendMessageW(handle(), EM_GETSEL, reinterpret_cast<WPARAM>(&span.start),
               reinterpret_cast<LPARAM>(&span.end));
  return span;
}

}  // namespace karvel
