#include "platform/windows/desktop/win32_desktop.h"

#include <utility>

#include "platform/windows/desktop/win32_dialogs.h"

namespace karvel {

/// While something waits for the user's answer.
class Win32Desktop::ModalScope {
 public:
  explicit ModalScope(Win32Desktop& desktop) : depth_(desktop.modalDepth_) {
    // An open menu would keep what comes next from being answered.
    EndMenu();
    ++depth_;
  }
  ~ModalScope() { --depth_; }
  ModalScope(const ModalScope&) = delete;
  ModalScope& operator=(const ModalScope&) = delete;

 private:
  int& depth_;
};

Win32Desktop::Win32Desktop() {
  // A send run may take long without answering messages: the panel still shows what it reports.
  DisableProcessWindowsGhosting();
  service_.onEnd = [this] { endSession(); };
  service_.onTaskbarCreated = [this] {
    if (trayIcon_) trayIcon_->addAgain();
  };
}

Win32Desktop::~Win32Desktop() = default;

void Win32Desktop::bind(Form& form) {
  windows_[&form] = std::make_unique<Win32FormWindow>(form, nullptr);
}

void Win32Desktop::release(Form& form) {
  if (trayOwner_ != nullptr && trayOwner_ == windowOf(form)) removeTrayIcon();
  windows_.erase(&form);
}

void Win32Desktop::showModal(Form& dialog, Form& owner) {
  if (!canAsk(owner)) {
    dialog.close();
    return;
  }
  const ModalScope modal(*this);
  const DialogScope open(owner, dialog);
  const HWND above = visibleWindow(owner);
  windows_[&dialog] = std::make_unique<Win32FormWindow>(dialog, above);
  if (above != nullptr) EnableWindow(above, FALSE);
  dialog.setVisible(true);
  runWhile([&dialog] { return !dialog.closed(); });
  // Before the dialog goes, so that the activation returns to its owner.
  if (above != nullptr) EnableWindow(above, TRUE);
  release(dialog);
}

void Win32Desktop::setBusy(Form& form, bool busy) {
  if (!busy) discardInput(form);
  if (Win32FormWindow* window = windowOf(form)) window->setBusy(busy);
}

void Win32Desktop::discardInput(const Form& form) {
  MSG message{};
  while (PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE) != FALSE) {
    if (Win32FormWindow* window = windowOf(form)) window->preview(message);
  }
  while (PeekMessageW(&message, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE) != FALSE) {
  }
}

void Win32Desktop::bringToForeground(Form& form) {
  SetForegroundWindow(windowOf(form)->handle());
}

void Win32Desktop::messageBox(Form& owner, const std::string& title, const std::string& text) {
  if (!canAsk(owner)) return;
  const ModalScope modal(*this);
  showMessage(visibleWindow(owner), title, text);
}

std::string Win32Desktop::browseForFolder(Form& owner, const std::string& title,
                                          const std::string& start) {
  if (!canAsk(owner)) return {};
  const ModalScope modal(*this);
  return chooseFolder(visibleWindow(owner), title, start);
}

void Win32Desktop::addTrayIcon(Form& owner, TrayImage image, const std::string& tip,
                               std::function<void()> onRightButtonUp) {
  trayOwner_ = windowOf(owner);
  trayOwner_->setImage(image);
  const auto answer = [this, handler = std::move(onRightButtonUp)] {
    // A message box on the screen wants its answer first.
    if (modalDepth_ == 0) handler();
  };
  trayIcon_ = std::make_unique<Win32TrayIcon>(trayOwner_->handle(), service_, image, tip, answer);
}

void Win32Desktop::changeTrayIcon(TrayImage image, const std::string& tip) {
  if (!trayIcon_) return;
  trayOwner_->setImage(image);
  trayIcon_->change(image, tip);
}

void Win32Desktop::removeTrayIcon() {
  EndMenu();
  trayIcon_.reset();
  trayOwner_ = nullptr;
}

void Win32Desktop::popupMenu(Form& owner, const std::vector<MenuItem*>& items) {
  if (!canAsk(owner)) return;
  const MenuItem* chosen = nullptr;
  {
    const ModalScope modal(*this);
    chosen = chooseFromMenu(windowOf(owner)->handle(), items);
  }
  if (chosen != nullptr && !quitting_) chosen->choose(owner);
}

std::unique_ptr<Timer> Win32Desktop::createTimer(std::chrono::milliseconds interval,
                                                 std::function<void()> onTick) {
  return std::make_unique<Win32Timer>(service_, interval, std::move(onTick));
}

void Win32Desktop::processPendingMessages() {
  MSG message{};
  bool quitMessage = false;
  while (!quitMessage && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    quitMessage = message.message == WM_QUIT;
    if (!quitMessage) dispatch(message);
  }
  if (quitMessage) answerQuitMessage();
}

void Win32Desktop::setEndSessionHandler(std::function<void()> handler) {
  endSessionHandler_ = std::move(handler);
}

void Win32Desktop::run() {
  runWhile([] { return true; });
}

void Win32Desktop::quit() {
  quitting_ = true;
  PostQuitMessage(0);
  EndMenu();
}

void Win32Desktop::runWhile(const std::function<bool()>& wanted) {
  MSG message{};
  while (!quitting_ && wanted()) {
    if (GetMessageW(&message, nullptr, 0, 0) > 0) {
      dispatch(message);
    } else {
      answerQuitMessage();
    }
  }
}

void Win32Desktop::dispatch(MSG& message) {
  const HWND root = GetAncestor(message.hwnd, GA_ROOT);
  if (Win32FormWindow* window = windowAt(root)) window->preview(message);
  // Looked up again: a handler may have released the form.
  Win32FormWindow* window = windowAt(root);
  if (window != nullptr && window->translate(message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

void Win32Desktop::answerQuitMessage() {
  if (quitting_) {
    PostQuitMessage(0);  // the loops further out are waiting for it
  } else {
    endSession();
  }
}

void Win32Desktop::endSession() {
  if (endSessionHandler_) endSessionHandler_();
}

Win32FormWindow* Win32Desktop::windowOf(const Form& form) const {
  const auto found = windows_.find(&form);
  return found == windows_.end() ? nullptr : found->second.get();
}

Win32FormWindow* Win32Desktop::windowAt(HWND handle) const {
  for (const auto& [form, window] : windows_) {
    if (window->handle() == handle) return window.get();
  }
  return nullptr;
}

HWND Win32Desktop::visibleWindow(const Form& form) const {
  const HWND window = windowOf(form)->handle();
  return IsWindowVisible(window) != FALSE ? window : nullptr;
}

}  // namespace karvel
