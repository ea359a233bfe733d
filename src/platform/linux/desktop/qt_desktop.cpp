#include "platform/linux/desktop/qt_desktop.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QLibraryInfo>
#include <QLocale>
#include <QSessionManager>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

#include "platform/linux/desktop/qt_dialogs.h"
#include "platform/linux/desktop/qt_images.h"
#include "platform/linux/desktop/qt_style.h"

namespace karvel {
namespace {

constexpr std::chrono::milliseconds kDrawingTime{500};
constexpr std::chrono::milliseconds kDrawingPause{5};

class QtTimer final : public Timer {
 public:
  QtTimer(std::chrono::milliseconds interval, std::function<void()> onTick)
      : onTick_(std::move(onTick)) {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setInterval(interval);
    QObject::connect(&timer_, &QTimer::timeout, [this] { onTick_(); });
  }
  void setEnabled(bool enabled) override {
    if (enabled) {
      timer_.start();
    } else {
      timer_.stop();
    }
  }

 private:
  std::function<void()> onTick_;
  QTimer timer_;
};

bool everyWindowDrawn() {
  const QWindowList windows = QGuiApplication::topLevelWindows();
  return std::all_of(windows.begin(), windows.end(), [](const QWindow* window) {
    const bool onScreen = window->isVisible() && window->visibility() != QWindow::Minimized;
    return !onScreen || window->isExposed();
  });
}

}  // namespace

QtDesktop::QtDesktop()
    : endSignals_(endSignals()),
      application_(arguments_.count, arguments_.values),
      endSignalNotifier_(endSignals_.descriptor(), QSocketNotifier::Read) {
  installQtStyle();
  QApplication::setWindowIcon(qtWindowImage());
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setQuitLockEnabled(false);
  // Qt's own words, as in the folder dialog; the program does without them where they are missing.
  if (translator_.load(QStringLiteral("qtbase_ja"),
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QApplication::installTranslator(&translator_);
  }
  QObject::connect(&endSignalNotifier_, &QSocketNotifier::activated, [this] {
    if (endSignals_.take()) endSession();
  });
  QObject::connect(&application_, &QGuiApplication::commitDataRequest,
                   [this](QSessionManager& manager) {
                     manager.setRestartHint(QSessionManager::RestartNever);
                     endSession();
                   });
}

QtDesktop::~QtDesktop() {
  trayIcon_.reset();
  views_.clear();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void QtDesktop::bind(Form& form) {
  release(form);
  views_[&form] = std::make_unique<QtFormView>(form, nullptr, Qt::NonModal);
}

void QtDesktop::release(Form& form) {
  views_.erase(&form);
}

void QtDesktop::showModal(Form& dialog, Form& owner) {
  if (quitting_) return;
  closeQtPopup();
  release(dialog);
  auto& view = views_[&dialog];
  view = std::make_unique<QtFormView>(dialog, visibleWindow(owner), Qt::ApplicationModal);
  QEventLoop loop;
  view->onClosed = [&loop] { loop.quit(); };
  dialog.setVisible(true);
  if (!dialog.closed()) loop.exec();
  release(dialog);
}

void QtDesktop::discardInput(Form& form) {
  if (QtFormWindow* window = visibleWindow(form)) window->discardInput();
}

void QtDesktop::bringToForeground(Form& form) {
  if (QtFormWindow* window = visibleWindow(form)) {
    window->raise();
    window->activateWindow();
  }
}

void QtDesktop::messageBox(Form& owner, const std::string& title, const std::string& text) {
  if (quitting_) return;
  closeQtPopup();
  showQtMessage(visibleWindow(owner), title, text);
}

std::string QtDesktop::browseForFolder(Form& owner, const std::string& title) {
  if (quitting_) return {};
  closeQtPopup();
  return chooseQtFolder(visibleWindow(owner), title);
}

void QtDesktop::addTrayIcon(Form&, TrayImage image, const std::string& tip,
                            std::function<void()> onRightButtonUp) {
  trayIcon_ = std::make_unique<QtTrayIcon>(
      image, tip, [this, handler = std::move(onRightButtonUp)] { openTrayMenu(handler); });
}

void QtDesktop::openTrayMenu(const std::function<void()>& onRightButtonUp) {
  // A message box on the screen wants its answer first.
  const bool busy =
      QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr;
  // A copy: the handler may remove the icon that holds it.
  const std::function<void()> handler = onRightButtonUp;
  if (!busy) handler();
}

void QtDesktop::changeTrayIcon(TrayImage image, const std::string& tip) {
  if (trayIcon_) trayIcon_->change(image, tip);
}

void QtDesktop::removeTrayIcon() {
  closeQtPopup();
  trayIcon_.reset();
}

void QtDesktop::popupMenu(Form&, const std::vector<MenuItem*>& items) {
  if (quitting_) return;
  MenuItem* chosen = chooseFromQtMenu(items);
  if (chosen != nullptr && chosen->enabled && chosen->onClick) chosen->onClick();
}

std::unique_ptr<Timer> QtDesktop::createTimer(std::chrono::milliseconds interval,
                                              std::function<void()> onTick) {
  return std::make_unique<QtTimer>(interval, std::move(onTick));
}

void QtDesktop::processPendingMessages() {
  QCoreApplication::processEvents();
  // The window system asks a while later to draw a window that has just been shown. The caller may
  // be about to keep the message loop waiting, and the window must not stand there empty.
  const QDeadlineTimer limit(kDrawingTime);
  while (!everyWindowDrawn() && !limit.hasExpired()) {
    std::this_thread::sleep_for(kDrawingPause);
    QCoreApplication::processEvents();
  }
}

void QtDesktop::setEndSessionHandler(std::function<void()> handler) {
  endSessionHandler_ = std::move(handler);
}

void QtDesktop::endSession() {
  if (endSessionHandler_) endSessionHandler_();
}

void QtDesktop::run() {
  if (!quitting_) QCoreApplication::exec();
}

void QtDesktop::quit() {
  quitting_ = true;
  // Not quit(): that one asks the windows first, and waits for run() to be reached.
  QCoreApplication::exit();
}

QtFormWindow* QtDesktop::visibleWindow(const Form& form) const {
  const auto found = views_.find(&form);
  if (found == views_.end()) return nullptr;
  QtFormWindow* window = found->second->window();
  return window != nullptr && window->isVisible() ? window : nullptr;
}

}  // namespace karvel
