#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "desktop/desktop_user.h"
#include "form/keyboard.h"
#include "platform/windows/desktop/win32_control.h"
#include "platform/windows/desktop/win32_desktop.h"
#include "platform/windows/system/wide_text.h"

namespace karvel {
namespace {

constexpr int kUsualDpi = 96;
constexpr const wchar_t* kDialog = L"#32770";

HWND win(Widget widget) {
  return reinterpret_cast<HWND>(widget);
}

Widget handle(HWND window) {
  return reinterpret_cast<Widget>(window);
}

DWORD style(HWND window) {
  return static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
}

bool isOfClass(HWND window, const wchar_t* name) {
  std::array<wchar_t, 64> found{};
  GetClassNameW(window, found.data(), static_cast<int>(found.size()));
  return lstrcmpiW(found.data(), name) == 0;
}

/// The windows of a class, from the front to the back, inside another one or on the screen.
std::vector<HWND> windowsOfClass(const wchar_t* name, HWND parent = nullptr) {
  std::vector<HWND> found;
  HWND last = nullptr;
  while ((last = FindWindowExW(parent, last, name, nullptr)) != nullptr) found.push_back(last);
  return found;
}

void input(const KEYBDINPUT& key) {
  INPUT event{};
  event.type = INPUT_KEYBOARD;
  event.ki = key;
  SendInput(1, &event, sizeof event);
}

/// In the window's font.
PixelPoint sizeOf(HWND window, const std::string& text) {
  const SelectedDc dc(window, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
  const std::wstring wide = toWide(text);
  SIZE size{};
  GetTextExtentPoint32W(dc.get(), wide.c_str(), static_cast<int>(wide.size()), &size);
  return {static_cast<int>(size.cx), static_cast<int>(size.cy)};
}

std::string shownText(HWND window) {
  const std::string text = fromWide(windowText(window));
  if (isOfClass(window, L"BUTTON")) return withoutMnemonics(text);
  if (!isOfClass(window, L"EDIT")) return text;
  const auto mask = static_cast<char>(SendMessageW(window, EM_GETPASSWORDCHAR, 0, 0));
  return mask != 0 ? std::string(windowText(window).size(), mask) : text;
}

std::string selectedText(HWND field) {
  DWORD start = 0;
  DWORD end = 0;
  SendMessageW(field, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  return fromWide(windowText(field).substr(start, end - start));
}

bool takesInputMethod(HWND field) {
  const HIMC context = ImmGetContext(field);
  ImmReleaseContext(field, context);
  return context != nullptr;
}

HCURSOR cursorOver(HWND window) {
  SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window),
               MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
  return GetCursor();
}

std::string toolTip(HWND window) {
  const HWND root = GetAncestor(window, GA_ROOT);
  for (const HWND tips : windowsOfClass(TOOLTIPS_CLASSW)) {
    if (GetWindow(tips, GW_OWNER) != root) continue;
    std::array<wchar_t, 1024> text{};
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND;
    tool.hwnd = root;
    tool.uId = reinterpret_cast<std::uintptr_t>(window);
    tool.lpszText = text.data();
    SendMessageW(tips, TTM_GETTEXTW, text.size(), reinterpret_cast<LPARAM>(&tool));
    return fromWide(text.data());
  }
  return {};
}

/// Readers of the screen take the text that stands right before a field, shown or not.
std::string spokenName(HWND field) {
  const HWND before = GetWindow(field, GW_HWNDPREV);
  return isOfClass(before, L"STATIC") ? fromWide(windowText(before)) : "";
}

PixelRect place(HWND window) {
  RECT place{};
  GetClientRect(window, &place);
  const HWND root = GetAncestor(window, GA_ROOT);
  if (window != root) {
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, root, reinterpret_cast<POINT*>(&place), 2);
  }
  return {static_cast<int>(place.left), static_cast<int>(place.top),
          static_cast<int>(place.right - place.left), static_cast<int>(place.bottom - place.top)};
}

PixelPoint needed(HWND window) {
  const PixelPoint letters = sizeOf(window, "mm");
  if (isOfClass(window, L"EDIT")) return {0, letters.y + 4};
  if (!isOfClass(window, L"BUTTON")) return {};
  // A push button has a frame, the others have a box in front.
  return {sizeOf(window, shownText(window)).x + letters.x, letters.y};
}

}  // namespace

std::unique_ptr<Desktop> makeDesktop() {
  // The thread remembers that an earlier desktop has quit.
  for (MSG message{}; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE;) {
  }
  return std::make_unique<Win32Desktop>();
}

Widget User::window(const Form& form) {
  return handle(FindWindowW(kDialog, toWide(form.caption()).c_str()));
}

Widget User::widget(const Form& form, const Control& wanted) {
  constexpr std::ptrdiff_t kFirstId = 100;
  const std::vector<Control*> controls = stackingOrder(form);
  const auto found = std::find(controls.begin(), controls.end(), &wanted);
  if (found == controls.end()) return nullptr;
  const auto id = static_cast<int>(kFirstId + (found - controls.begin()));
  return handle(GetDlgItem(win(window(form)), id));
}

void User::move(Key key, bool down) {
  const auto code = static_cast<WORD>(key);
  const auto scanCode = static_cast<WORD>(MapVirtualKeyW(code, MAPVK_VK_TO_VSC));
  const DWORD extended = key == Key::kUp || key == Key::kDown ? KEYEVENTF_EXTENDEDKEY : 0;
  input(KEYBDINPUT{code, scanCode, extended | (down ? 0 : KEYEVENTF_KEYUP), 0, 0});
  settle();
}

void User::type(const std::string& text) {
  for (const wchar_t unit : toWide(text)) {
    for (const DWORD flags : {0, KEYEVENTF_KEYUP}) {
      input(KEYBDINPUT{0, static_cast<WORD>(unit), KEYEVENTF_UNICODE | flags, 0, 0});
    }
  }
  settle();
}

void User::clickAhead(Widget widget) {
  // Of a disabled one the mouse tells the window behind it.
  if (IsWindowEnabled(win(widget)) == FALSE) return;
  RECT inside{};
  GetClientRect(win(widget), &inside);
  const LPARAM point = MAKELPARAM(8, inside.bottom / 2);
  PostMessageW(win(widget), WM_LBUTTONDOWN, MK_LBUTTON, point);
  PostMessageW(win(widget), WM_LBUTTONUP, 0, point);
}

void User::focus(Widget widget) {
  SendMessageW(GetAncestor(win(widget), GA_ROOT), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(widget),
               TRUE);
  settle();
}

/// By way of a field that nobody sees.
void User::putOnClipboard(const std::string& text) {
  const HWND field = CreateWindowExW(0, L"EDIT", toWide(text).c_str(), WS_POPUP | ES_MULTILINE, 0,
                                     0, 0, 0, nullptr, nullptr, nullptr, nullptr);
  SendMessageW(field, EM_SETSEL, 0, -1);
  SendMessageW(field, WM_COPY, 0, 0);
  DestroyWindow(field);
}

void User::useCloseBox(Widget window) {
  PostMessageW(win(window), WM_SYSCOMMAND, SC_CLOSE, 0);
  settle();
}

void User::minimize(Widget window) {
  PostMessageW(win(window), WM_SYSCOMMAND, SC_MINIMIZE, 0);
  settle();
}

/// The window is moved to a monitor of another resolution.
void User::setTextSize(double factor) {
  if (factor == std::exchange(textSize_, factor)) return;
  const auto dpi = static_cast<WORD>(kUsualDpi * factor);
  for (const HWND window : windowsOfClass(kDialog)) {
    RECT place{};
    GetWindowRect(window, &place);
    SendMessageW(window, WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
  }
  settle();
}

Sight User::look(Widget widget) {
  const HWND seen = win(widget);
  return {
      .isShown = IsWindowVisible(seen) != FALSE,
      .isEnabled = IsWindowEnabled(seen) != FALSE,
      .isChecked = SendMessageW(seen, BM_GETCHECK, 0, 0) == BST_CHECKED,
      .looksDefault = (style(seen) & BS_TYPEMASK) == BS_DEFPUSHBUTTON,
      .takesInputMethod = takesInputMethod(seen),
      .canBeMinimized = (style(seen) & WS_MINIMIZEBOX) != 0,
      .waits = cursorOver(seen) == LoadCursorW(nullptr, IDC_WAIT),
      .text = shownText(seen),
      .selectedText = selectedText(seen),
      .toolTip = toolTip(seen),
      .spokenName = spokenName(seen),
      .place = place(seen),
      .needed = needed(seen),
  };
}

Widget User::focused() {
  return handle(GetFocus());
}

std::string User::message() {
  const HWND box = GetForegroundWindow();
  std::string mark;
  std::string text;
  for (const HWND child : windowsOfClass(L"Static", box)) {
    const LRESULT icon = SendMessageW(child, STM_GETICON, 0, 0);
    if (icon == 0) text = fromWide(windowText(child));
    if (reinterpret_cast<HICON>(icon) == LoadIconW(nullptr, IDI_HAND)) mark = "!";
  }
  return mark + fromWide(windowText(box)) + ": " + text;
}

std::string User::menu() {
  std::string lines;
  constexpr UINT kGetMenu = 0x01E1;
  const HWND window = FindWindowW(L"#32768", nullptr);
  if (window == nullptr || IsWindowVisible(window) == FALSE) return lines;
  const auto menu = reinterpret_cast<HMENU>(SendMessageW(window, kGetMenu, 0, 0));
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    std::array<wchar_t, 64> caption{};
    GetMenuStringW(menu, static_cast<UINT>(i), caption.data(), static_cast<int>(caption.size()),
                   MF_BYPOSITION);
    const UINT state = GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
    const bool separator = (state & MF_SEPARATOR) != 0;
    const std::string text = separator ? "-" : withoutMnemonics(fromWide(caption.data()));
    lines += (separator || (state & MF_GRAYED) == 0 ? text : "(" + text + ")") + "|";
  }
  return lines;
}

}  // namespace karvel
