#include "platform/windows/desktop/win32_form_window.h"

#include <algorithm>
#include <utility>

#include "form/layout.h"
#include "platform/windows/desktop/win32_controls.h"
#include "platform/windows/desktop/win32_keys.h"
#include "platform/windows/desktop/win32_tray_icon.h"
#include "platform/windows/system/wide_text.h"

namespace karvel {
namespace {

// A message to itself: what must wait until the system has finished what it is doing.
constexpr UINT kReportState = WM_APP;

constexpr WORD kFirstId = 100;

static_assert(Win32TrayIcon::kCallbackMessage == DM_SETDEFID &&
              Win32TrayIcon::kIdentifier < kFirstId);

/// A dialog without controls, of the system's own class.
struct EmptyDialog {
  DLGTEMPLATE header;
  WORD menu;
  WORD windowClass;
  WORD title;
};

HWND createDialog(const Form& form, HWND owner, DLGPROC procedure, LPARAM parameter) {
  EmptyDialog dialog{};
  dialog.header.style = WS_POPUP | WS_CAPTION | WS_SYSMENU;
  if (form.table().canMinimize) dialog.header.style |= WS_MINIMIZEBOX;
  return CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &dialog.header, owner, procedure,
                                    parameter);
}

DWORD styleOf(HWND window, int which) {
  return static_cast<DWORD>(GetWindowLongPtrW(window, which));
}

PixelRect toPixels(const RECT& rect) {
  return {static_cast<int>(rect.left), static_cast<int>(rect.top),
          static_cast<int>(rect.right - rect.left), static_cast<int>(rect.bottom - rect.top)};
}

}  // namespace

Win32FormWindow::Win32FormWindow(Form& form, HWND owner)
    : form_(form),
      owner_(owner),
      handle_(createDialog(form, owner, &dialogProc, reinterpret_cast<LPARAM>(this))),
      dpi_(dpiOf(handle_)),
      focusKeeper_(form) {
  keepDialogLayout(handle_);
  setIcons(windowImage(IconSize::kSmall, dpi_), windowImage(IconSize::kBig, dpi_));
  form_.setView(this);
  formChanged();
}

Win32FormWindow::~Win32FormWindow() {
  form_.setView(nullptr);
  SetWindowLongPtrW(handle_, DWLP_USER, 0);
  controls_.clear();
  DestroyWindow(handle_);
}

INT_PTR CALLBACK Win32FormWindow::dialogProc(HWND window, UINT message, WPARAM first,
                                             LPARAM second) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(window, DWLP_USER, second);
    return FALSE;
  }
  auto* self = reinterpret_cast<Win32FormWindow*>(GetWindowLongPtrW(window, DWLP_USER));
  return self != nullptr && self->handleMessage(message, first, second) ? TRUE : FALSE;
}

bool Win32FormWindow::handleMessage(UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_COMMAND:
      if (Win32Control* child = find(GetDlgItem(handle_, LOWORD(first)))) {
        answer(*child, HIWORD(first));
      }
      return true;
    case DM_SETDEFID:
      // A message of the icon has the same number: no button is meant by it.
      return first == Win32TrayIcon::kIdentifier;
    case WM_DRAWITEM:
      return draw(static_cast<WORD>(first), *reinterpret_cast<const DRAWITEMSTRUCT*>(second));
    case WM_SETCURSOR:
      return showWaitCursor();
    case WM_CLOSE:
      form_.close();
      return true;
    case WM_ACTIVATE:
      if (LOWORD(first) == WA_INACTIVE) form_.keyEvent(0);  // a release would go elsewhere
      return false;
    case WM_SIZE:
      PostMessageW(handle_, kReportState, 0, 0);
      return false;
    case kReportState:
      reportState();
      return true;
    case WM_DPICHANGED:
      changeResolution(HIWORD(first), *reinterpret_cast<const RECT*>(second));
      return true;
    case WM_SETTINGCHANGE:
      if (first == SPI_SETNONCLIENTMETRICS) layOut();
      return false;
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
      InvalidateRect(handle_, nullptr, TRUE);
      return false;
    default:
      return false;
  }
}

void Win32FormWindow::answer(Win32Control& child, WORD notification) {
  if (notification == BN_SETFOCUS || notification == EN_SETFOCUS) {
    showDefaultButton();
  } else {
    child.notify(notification);
  }
}

bool Win32FormWindow::draw(WORD id, const DRAWITEMSTRUCT& item) const {
  Win32Control* child = find(GetDlgItem(handle_, id));
  if (child == nullptr) return false;
  child->draw(item);
  return true;
}

void Win32FormWindow::changeResolution(UINT dpi, const RECT& suggested) {
  dpi_ = dpi;
  layOut();
  SetWindowPos(handle_, nullptr, static_cast<int>(suggested.left), static_cast<int>(suggested.top),
               0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Win32FormWindow::reportState() {
  if (!form_.visible() || IsWindowVisible(handle_) == FALSE) return;
  const bool iconic = IsIconic(handle_) != FALSE;
  // Whoever has opened a dialog above the window must answer that one first.
  if (iconic && IsWindowEnabled(handle_) == FALSE) return;
  form_.setWindowState(iconic ? WindowState::kMinimized : WindowState::kNormal);
}

bool Win32FormWindow::showWaitCursor() const {
  if (!busy_) return false;
  SetCursor(LoadCursorW(nullptr, IDC_WAIT));
  SetWindowLongPtrW(handle_, DWLP_MSGRESULT, TRUE);
  return true;
}

void Win32FormWindow::formChanged() {
  const std::wstring caption = toWide(form_.caption());
  if (windowText(handle_) != caption) SetWindowTextW(handle_, caption.c_str());
  if (form_.closed()) EndMenu();
  if (!form_.visible()) {
    ShowWindow(handle_, SW_HIDE);
    return;
  }
  if (controls_.empty()) {
    addControls();
    layOut();
    moveToFirstPlace();
  }
  applyTopmost();
  applyWindowState();
}

void Win32FormWindow::controlChanged(Control& control) {
  Win32Control* window = find(control);
  if (window == nullptr) return;
  const Control* before = focused();
  for (const auto& other : controls_) {
    // Where the keyboard enters a group depends on all of its options.
    if (other.get() == window || excludeEachOther(other->control(), control)) other->sync();
  }
  toolTips_->set(window->handle(), window->toolTip());
  if (const Control* next = focusKeeper_.afterChange(control, before)) focus(*next);
  // A run keeps the message loop waiting; what it reports is seen all the same.
  UpdateWindow(window->handle());
}

void Win32FormWindow::setImage(TrayImage image) {
  setIcons(trayImage(image, IconSize::kSmall, dpi_), trayImage(image, IconSize::kBig, dpi_));
}

void Win32FormWindow::setIcons(Win32Icon small, Win32Icon big) {
  SendMessageW(handle_, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(small.get()));
  SendMessageW(handle_, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(big.get()));
  smallIcon_ = std::move(small);
  bigIcon_ = std::move(big);
}

void Win32FormWindow::setBusy(bool busy) {
  busy_ = busy;
  // The mouse may not move before the program is busy.
  POINT pointer{};
  GetCursorPos(&pointer);
  const HWND under = WindowFromPoint(pointer);
  if (GetAncestor(under, GA_ROOT) != handle_) return;
  SendMessageW(under, WM_SETCURSOR, reinterpret_cast<WPARAM>(under),
               MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
}

void Win32FormWindow::preview(const MSG& message) {
  if (isPress(message)) focusKeeper_.userActs();
  if (isKeyMessage(message)) form_.keyEvent(shiftMask());
}

bool Win32FormWindow::translate(MSG& message) {
  return answerKey(message) || moveWithinOptions(message) ||
         IsDialogMessageW(handle_, &message) != FALSE;
}

void Win32FormWindow::addControls() {
  registerCommonControls();
  toolTips_ = std::make_unique<Win32ToolTips>(handle_);
  for (Control* control : stackingOrder(form_)) {
    const auto id = static_cast<WORD>(kFirstId + controls_.size());
    controls_.push_back(makeControl(form_, *control, handle_, id));
    controls_.back()->sync();
    if (control->has(ControlRow::kDefaultButton)) SendMessageW(handle_, DM_SETDEFID, id, 0);
  }
}

void Win32FormWindow::layOut() {
  if (controls_.empty()) return;
  const auto previous = std::exchange(look_, std::make_unique<Win32Look>(dpi_));
  const DialogUnits units = look_->dialogUnits(handle_);
  resizeTo(units.horizontal(form_.table().width), units.vertical(form_.table().height));
  for (const auto& control : controls_) {
    control->applyLook(*look_);
    control->moveTo(units.rect(control->control().row().rect));
    toolTips_->set(control->handle(), control->toolTip());
  }
}

void Win32FormWindow::resizeTo(int clientWidth, int clientHeight) {
  RECT area{0, 0, clientWidth, clientHeight};
  addWindowFrame(area, styleOf(handle_, GWL_STYLE), styleOf(handle_, GWL_EXSTYLE), dpi_);
  const PixelRect whole = toPixels(area);
  SetWindowPos(handle_, nullptr, 0, 0, whole.width, whole.height,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Win32FormWindow::moveToFirstPlace() {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(owner_ != nullptr ? owner_ : handle_, MONITOR_DEFAULTTOPRIMARY),
                  &monitor);
  RECT around = monitor.rcWork;
  if (owner_ != nullptr) GetWindowRect(owner_, &around);
  RECT own{};
  GetWindowRect(handle_, &own);
  const auto [x, y] = firstPlace(toPixels(own), toPixels(around), toPixels(monitor.rcWork));
  SetWindowPos(handle_, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Win32FormWindow::applyTopmost() const {
  const bool onTop = (styleOf(handle_, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
  if (onTop == form_.topmost()) return;
  SetWindowPos(handle_, form_.topmost() ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void Win32FormWindow::applyWindowState() {
  const bool iconic = IsIconic(handle_) != FALSE;
  if (form_.windowState() == WindowState::kMinimized) {
    if (!iconic) ShowWindow(handle_, SW_MINIMIZE);
  } else if (iconic || IsWindowVisible(handle_) == FALSE) {
    showInFront();
  }
}

void Win32FormWindow::showInFront() {
  EndMenu();  // the icon's, which is about to go
  ShowWindow(handle_, SW_SHOWNORMAL);
  SetForegroundWindow(handle_);
  if (focused() != nullptr) return;
  if (const Control* first = nextTabStop(form_, nullptr)) focus(*first);
}

bool Win32FormWindow::answerKey(const MSG& message) {
  const AnswerKey key = answerKeyOf(message);
  if (key == AnswerKey::kNone) return false;
  if (Control* button = answeredBy(form_, key, isRepeated(message), focused())) button->click();
  return true;
}

bool Win32FormWindow::moveWithinOptions(const MSG& message) {
  const int step = arrowStepOf(message);
  const Control* from = focused();
  if (step == 0 || from == nullptr || from->row().kind == ControlKind::kTextBox) return false;
  if (Control* option = neighbouringOption(form_, *from, step)) {
    focus(*option);
    option->click();
  }
  return true;
}

void Win32FormWindow::showDefaultButton() {
  const Control* button = answeredBy(form_, AnswerKey::kEnter, false, focused());
  for (const auto& control : controls_) control->showDefault(&control->control() == button);
}

/// By way of the dialog, which remembers it while another window is in front.
void Win32FormWindow::focus(const Control& control) const {
  SendMessageW(handle_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(find(control)->handle()), TRUE);
}

Control* Win32FormWindow::focused() const {
  const Win32Control* child = find(GetFocus());
  return child != nullptr ? &child->control() : nullptr;
}

Win32Control* Win32FormWindow::find(const Control& control) const {
  const auto found = std::find_if(controls_.begin(), controls_.end(), [&](const auto& window) {
    return &window->control() == &control;
  });
  return found == controls_.end() ? nullptr : found->get();
}

Win32Control* Win32FormWindow::find(HWND child) const {
  const auto found = std::find_if(controls_.begin(), controls_.end(),
                                  [&](const auto& window) { return window->handle() == child; });
  return found == controls_.end() ? nullptr : found->get();
}

}  // namespace karvel
