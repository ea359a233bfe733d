#include <QApplication>
#include <QLabel>
#include <QScreen>

#include "desktop/desktop_fixture.h"

namespace karvel {
namespace {

/// What the window system sees of the desktop and a user's hands do not.
class OnQt : public ShownForm {
 protected:
  QWidget& onQt(Widget widget) const { return *reinterpret_cast<QWidget*>(widget); }
};

TEST_F(OnQt, TheSessionManagersLastWordAsksTheProgramToEnd) {
  int asked = 0;
  desktop_->setEndSessionHandler([&] { ++asked; });
  QEvent quit(QEvent::Quit);
  QCoreApplication::sendEvent(qApp, &quit);
  EXPECT_EQ(asked, 1);
}

TEST_F(OnQt, AWindowStaysWhereTheUserHasPutIt) {
  onQt(window()).move(7, 9);
  for (const bool shown : {false, true}) {
    form_.setVisible(shown);
    desktop_->processPendingMessages();
  }
  EXPECT_EQ(onQt(window()).pos(), QPoint(7, 9));
}

TEST_F(OnQt, AStatusTextIsPaintedWithoutTheMessageLoopAndATooLongOneFromItsTop) {
  const auto seen = [this] {
    return QGuiApplication::primaryScreen()->grabWindow(onQt(window()).winId()).toImage();
  };
  const auto& label = static_cast<const QLabel&>(onQt(widget("Label1", 0)));
  const QImage before = seen();
  form_.control("Label1", 0).setCaption("one line");
  EXPECT_NE(seen(), before);
  EXPECT_TRUE(label.alignment().testFlag(Qt::AlignVCenter));
  form_.control("Label1", 0).setCaption("<b>" + std::string(600, 'x') + "</b>");
  EXPECT_TRUE(label.alignment().testFlag(Qt::AlignTop));
  EXPECT_TRUE(label.toolTip().contains("&lt;b&gt;")) << "a server's tags are no tags";
}

TEST_F(OnQt, TheIconIsTheWindows) {
  const auto image = [] { return QApplication::windowIcon().pixmap(32).toImage(); };
  desktop_->addTrayIcon(form_, TrayImage::kNormal, "", [] {});
  const QImage normal = image();
  desktop_->changeTrayIcon(TrayImage::kFailure, "");
  EXPECT_NE(image(), normal);
}

}  // namespace
}  // namespace karvel
