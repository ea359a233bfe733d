#include "platform/windows/desktop/win32_form_window.h"

#include <algorithm>
#include <utility>

#include "platform/windows/desktop/win32_common_controls.h"
#include "platform/windows/desktop/win32_control_order.h"
#include "platform/windows/desktop/win32_dialog_units.h"
#include "platform/windows/desktop/win32_images.h"
#include "platform/windows/desktop/win32_keys.h"
#include "platform/windows/desktop/win32_scaling.h"
#include "platform/windows/desktop/win32_text.h"
#include "platform/windows/desktop/win32_tray_icon.h"
#include "platform/windows/system/wide_text.h"

namespace karvel {
namespace {

// Messages to itself: what must wait until the system has finished what it is doing.
constexpr UINT kReportState = WM_APP;
constexpr UINT kMendFocus = WM_APP + 1;

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

WORD idOf(const Control& control, std::size_t place) {
  // Escape presses the button of this number.
  if (control.has(ControlRow::kCancelButton)) return IDCANCEL;
  return static_cast<WORD>(kFirstId + place);
}

DWORD styleOf(HWND window, int which) {
  return static_cast<DWORD>(GetWindowLongPtrW(window, which));
}

}  // namespace

Win32FormWindow::Win32FormWindow(Form& form, HWND owner)
    : form_(form),
      owner_(owner),
      handle_(createDialog(form, owner, &dialogProc, reinterpret_cast<LPARAM>(this))),
      dpi_(dpiOf(handle_)) {
  keepDialogLayout(handle_);
  setIcons(windowImage(systemMetric(SM_CXSMICON, dpi_)),
           windowImage(systemMetric(SM_CXICON, dpi_)));
  form_.setView(this);
  formChanged();
}

Win32FormWindow::~Win32FormWindow() {
  form_.setView(nullptr);
  controls_.clear();
  SetWindowLongPtrW(handle_, DWLP_USER, 0);
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
      if (Win32ControlWindow* child = find(GetDlgItem(handle_, LOWORD(first)))) {
        answer(*child, HIWORD(first));
      }
      return true;
    case DM_SETDEFID:
      // A message of the icon has the same number: no button is meant by it.
      return first == Win32TrayIcon::kIdentifier;
    case WM_DRAWITEM:
      return draw(static_cast<WORD>(first), *reinterpret_cast<const DRAWITEMSTRUCT*>(second));
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
    case kMendFocus:
      mendFocus();
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

void Win32FormWindow::formChanged() {
  const std::wstring caption = toWide(form_.caption());
  if (windowText(handle_) != caption) SetWindowTextW(handle_, caption.c_str());
  if (!form_.visible()) {
    ShowWindow(handle_, SW_HIDE);
    return;
  }
  if (controls_.empty()) {
    addControls();
    layOut();
    centre();
  }
  applyTopmost();
  applyWindowState();
}

void Win32FormWindow::controlChanged(Control& control) {
  Win32ControlWindow* window = find(control);
  if (window == nullptr) return;
  const bool focused = GetFocus() == window->handle();
  for (const auto& other : controls_) {
    // Which option the keyboard reaches depends on the others.
    if (other.get() == window || excludeEachOther(other->control(), control)) other->sync();
  }
  toolTips_->set(window->handle(), window->toolTip());
  if (focused && !control.enabled()) keepFocusOf(window->handle());
  // A run keeps the message loop waiting; what it reports is seen all the same.
  UpdateWindow(window->handle());
}

void Win32FormWindow::setImage(TrayImage image) {
  setIcons(trayImage(image, systemMetric(SM_CXSMICON, dpi_)),
           trayImage(image, systemMetric(SM_CXICON, dpi_)));
}

void Win32FormWindow::setIcons(Win32Icon small, Win32Icon big) {
  SendMessageW(handle_, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(small.get()));
  SendMessageW(handle_, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(big.get()));
  smallIcon_ = std::move(small);
  bigIcon_ = std::move(big);
}

void Win32FormWindow::preview(const MSG& message) {
  if (isKeyMessage(message)) form_.keyEvent(shiftMask());
}

bool Win32FormWindow::translate(MSG& message) {
  preview(message);
  // A key held down belongs to the window in which it was pressed: it must not press the next
  // one's button.
  if (isRepeatedAnswer(message)) return true;
  return pressDefaultButton(message) || moveWithinOptions(message) ||
         IsDialogMessageW(handle_, &message) != FALSE;
}

void Win32FormWindow::answer(Win32ControlWindow& child, WORD notification) {
  if (notification == BN_SETFOCUS || notification == EN_SETFOCUS) {
    showDefaultButton(child.control());
  } else {
    child.notify(notification);
  }
}

bool Win32FormWindow::draw(WORD id, const DRAWITEMSTRUCT& item) const {
  Win32ControlWindow* child = find(GetDlgItem(handle_, id));
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

void Win32FormWindow::addControls() {
  registerCommonControls();
  toolTips_ = std::make_unique<Win32ToolTips>(handle_);
  for (Control* control : inStackingOrder(form_)) {
    if (control->has(ControlRow::kHidden)) continue;
    const WORD id = idOf(*control, controls_.size());
    controls_.push_back(makeControlWindow(form_, *control, handle_, id));
    controls_.back()->sync();
    if (control->has(ControlRow::kDefaultButton)) SendMessageW(handle_, DM_SETDEFID, id, 0);
  }
}

void Win32FormWindow::layOut() {
  if (controls_.empty()) return;
  const auto previous = std::exchange(look_, std::make_unique<Win32Look>(dpi_));
  const Win32DialogUnits units(handle_, look_->font());
  resizeTo(units.horizontal(form_.table().width), units.vertical(form_.table().height));
  for (const auto& control : controls_) {
    const RECT place = units.rect(control->control().row().rect);
    control->applyLook(*look_);
    control->moveTo(place);
    toolTips_->set(control->handle(), control->toolTip());
  }
}

void Win32FormWindow::resizeTo(int clientWidth, int clientHeight) {
  RECT area{0, 0, clientWidth, clientHeight};
  addWindowFrame(area, styleOf(handle_, GWL_STYLE), styleOf(handle_, GWL_EXSTYLE), dpi_);
  SetWindowPos(handle_, nullptr, 0, 0, static_cast<int>(area.right - area.left),
               static_cast<int>(area.bottom - area.top),
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Win32FormWindow::centre() {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(owner_ != nullptr ? owner_ : handle_, MONITOR_DEFAULTTOPRIMARY),
                  &monitor);
  RECT around = monitor.rcWork;
  if (owner_ != nullptr) GetWindowRect(owner_, &around);
  RECT own{};
  GetWindowRect(handle_, &own);
  const LONG x = (around.left + around.right - (own.right - own.left)) / 2;
  const LONG y = (around.top + around.bottom - (own.bottom - own.top)) / 2;
  SetWindowPos(handle_, nullptr, static_cast<int>(std::max(x, monitor.rcWork.left)),
               static_cast<int>(std::max(y, monitor.rcWork.top)), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
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
  ShowWindow(handle_, SW_SHOWNORMAL);
  SetForegroundWindow(handle_);
  // Whoever has the focus: the system may have moved it, without the default button's look.
  const HWND focused = GetFocus();
  focus(IsChild(handle_, focused) != FALSE ? focused : GetNextDlgTabItem(handle_, nullptr, FALSE));
}

/// By way of the dialog, which moves the default button's look along with the focus.
void Win32FormWindow::focus(HWND child) const {
  SendMessageW(handle_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(child), TRUE);
}

/// The button that Enter presses while `focused` has the focus, or nullptr.
Control* Win32FormWindow::defaultButton(Control* focused) const {
  if (focused != nullptr && focused->row().kind == ControlKind::kButton) return focused;
  const auto found =
      std::find_if(form_.controls().begin(), form_.controls().end(),
                   [](const auto& control) { return control->has(ControlRow::kDefaultButton); });
  return found == form_.controls().end() ? nullptr : found->get();
}

void Win32FormWindow::showDefaultButton(Control& focused) {
  const Control* button = defaultButton(&focused);
  for (const auto& control : controls_) control->showDefault(&control->control() == button);
}

bool Win32FormWindow::pressDefaultButton(const MSG& message) {
  if (message.message != WM_KEYDOWN || message.wParam != VK_RETURN) return false;
  const Win32ControlWindow* from = find(message.hwnd);
  Control* button = defaultButton(from != nullptr ? &from->control() : nullptr);
  if (button != nullptr) button->click();
  return true;
}

bool Win32FormWindow::moveWithinOptions(const MSG& message) {
  const int step = arrowStep(message);
  const Win32ControlWindow* from = step != 0 ? find(message.hwnd) : nullptr;
  if (from == nullptr || from->control().row().kind == ControlKind::kTextBox) return false;
  // The dialog's own groups have no names: an arrow would leave a button for the next option.
  Control* option = neighbouringOption(form_, from->control(), step);
  if (option == nullptr) return true;
  focus(find(*option)->handle());
  if (!option->selected()) option->select();
  return true;
}

/// A control that is disabled while it has the focus would take the keyboard with it. A run
/// disables buttons and enables them again: only what is left when it is over counts.
void Win32FormWindow::keepFocusOf(HWND disabled) {
  lostFocus_ = disabled;
  PostMessageW(handle_, kMendFocus, 0, 0);
}

void Win32FormWindow::mendFocus() {
  const HWND wanted = std::exchange(lostFocus_, nullptr);
  const HWND focused = GetFocus();
  const bool lost = focused == nullptr || focused == handle_ || focused == wanted;
  if (wanted == nullptr || !lost || GetActiveWindow() != handle_) return;
  const bool usable = IsWindowEnabled(wanted) != FALSE;
  focus(usable ? wanted : GetNextDlgTabItem(handle_, wanted, FALSE));
}

Win32ControlWindow* Win32FormWindow::find(const Control& control) const {
  const auto found = std::find_if(controls_.begin(), controls_.end(), [&](const auto& window) {
    return &window->control() == &control;
  });
  return found == controls_.end() ? nullptr : found->get();
}

Win32ControlWindow* Win32FormWindow::find(HWND child) const {
  const auto found = std::find_if(controls_.begin(), controls_.end(),
                                  [&](const auto& window) { return window->handle() == child; });
  return found == controls_.end() ? nullptr : found->get();
}

}  // namespace karvel
