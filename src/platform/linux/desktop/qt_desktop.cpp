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
#include "platform/linux/desktop/qt_look.h"

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

/// The application; `onTerminate` runs when the session manager ends it, for which Qt would close
/// the windows and leave the loop without a word.
template <class Base>
class Application final : public Base {
 public:
  Application(int& count, char** values, std::function<void()> onTerminate)
      : Base(count, values), onTerminate_(std::move(onTerminate)) {}

 protected:
  bool event(QEvent* event) override {
    if (event->type() != QEvent::Quit) return Base::event(event);
    onTerminate_();
    return true;
  }

 private:
  std::function<void()> onTerminate_;
};

template <class Base>
std::unique_ptr<QCoreApplication> makeApplication(int& count, char** values,
                                                  std::function<void()> onTerminate) {
  return std::make_unique<Application<Base>>(count, values, std::move(onTerminate));
}

}  // namespace

QtDesktop::QtDesktop(bool hasDisplay)
    : endSignals_(endSignals()),
      hasDisplay_(hasDisplay),
      application_((hasDisplay ? makeApplication<QApplication>
                               : makeApplication<QCoreApplication>)(arguments_.count,
                                                                    arguments_.values,
                                                                    [this] { endSession(); })),
      endSignalNotifier_(endSignals_.descriptor(), QSocketNotifier::Read) {
  QCoreApplication::setQuitLockEnabled(false);
  QObject::connect(&endSignalNotifier_, &QSocketNotifier::activated, [this] {
    if (endSignals_.take()) endSession();
  });
  if (hasDisplay) setUpWindows();
}

void QtDesktop::setUpWindows() {
  installQtStyle();
  QApplication::setWindowIcon(qtWindowImage());
  QApplication::setQuitOnLastWindowClosed(false);
  // Qt's own words, as in the folder dialog; the program does without them where they are missing.
  if (translator_.load(QStringLiteral("qtbase_ja"),
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QApplication::installTranslator(&translator_);
  }
  // The session manager asks everyone to save: before the session ends, if nobody cancels that,
  // and whenever it likes. The program has nothing to save, and is started by the log-in alone.
  QObject::connect(qApp, &QGuiApplication::commitDataRequest, [](QSessionManager& manager) {
    manager.setRestartHint(QSessionManager::RestartNever);
  });
}

QtDesktop::~QtDesktop() {
  trayIcon_.reset();
  views_.clear();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void QtDesktop::bind(Form& form) {
  views_[&form] = std::make_unique<QtFormView>(form, nullptr, Qt::NonModal);
}

void QtDesktop::release(Form& form) {
  if (trayOwner_ == &form) removeTrayIcon();
  views_.erase(&form);
}

void QtDesktop::showModal(Form& dialog, Form& owner) {
  if (!canAsk(owner)) {
    dialog.close();
    return;
  }
  closeQtPopup();
  const DialogScope open(owner, dialog);
  auto& view = views_[&dialog];
  view = std::make_unique<QtFormView>(dialog, visibleWindow(owner), Qt::ApplicationModal);
  QEventLoop loop;
  view->onClosed = [&loop] { loop.quit(); };
  dialog.setVisible(true);
  if (!dialog.closed()) loop.exec();
  release(dialog);
}

void QtDesktop::setBusy(Form& form, bool busy) {
  if (busy) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    return;
  }
  QApplication::restoreOverrideCursor();
  if (QtFormWindow* window = visibleWindow(form)) window->discardInput();
}

void QtDesktop::bringToForeground(Form& form) {
  if (QtFormWindow* window = visibleWindow(form)) {
    window->raise();
    window->activateWindow();
  }
}

void QtDesktop::messageBox(Form& owner, const std::string& title, const std::string& text) {
  if (!canAsk(owner)) return;
  closeQtPopup();
  showQtMessage(visibleWindow(owner), title, text);
}

std::string QtDesktop::browseForFolder(Form& owner, const std::string& title,
                                       const std::string& start) {
  if (!canAsk(owner)) return {};
  closeQtPopup();
  return chooseQtFolder(visibleWindow(owner), title, start);
}

void QtDesktop::addTrayIcon(Form& owner, TrayImage image, const std::string& tip,
                            std::function<void()> onRightButtonUp) {
  trayOwner_ = &owner;
  trayIcon_ = std::make_unique<QtTrayIcon>(
      tip, [this, handler = std::move(onRightButtonUp)] { openTrayMenu(handler); });
  changeTrayIcon(image, tip);
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
  if (!trayIcon_) return;
  trayIcon_->change(image, tip);
  QApplication::setWindowIcon(qtTrayImage(image));
}

void QtDesktop::removeTrayIcon() {
  closeQtPopup();
  trayIcon_.reset();
  trayOwner_ = nullptr;
}

void QtDesktop::popupMenu(Form& owner, const std::vector<MenuItem*>& items) {
  if (!canAsk(owner)) return;
  const MenuItem* chosen = chooseFromQtMenu(items);
  if (chosen != nullptr && !quitting_) chosen->choose(owner);
}

std::unique_ptr<Timer> QtDesktop::createTimer(std::chrono::milliseconds interval,
                                              std::function<void()> onTick) {
  return std::make_unique<QtTimer>(interval, std::move(onTick));
}

void QtDesktop::processPendingMessages() {
  QCoreApplication::processEvents();
  if (!hasDisplay_) return;
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
