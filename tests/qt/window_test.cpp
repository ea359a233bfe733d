#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <csignal>

#include "qt/qt_fixture.h"
#include "qt/sample_form.h"

namespace karvel {
namespace {

class Window : public QtFixture {
 protected:
  Form form_{kSampleTable};
};

TEST_F(Window, IsMadeWhenTheFormIsFirstShown) {
  desktop_.bind(form_);
  form_.control("Text", 0).setText("early");
  EXPECT_EQ(window("SampleForm"), nullptr);
  form_.setVisible(true);
  EXPECT_TRUE(window("SampleForm")->isVisible());
  EXPECT_EQ(find<QLineEdit>(form_, "Text", 0)->text(), "early");
  form_.setVisible(false);
  EXPECT_FALSE(window("SampleForm")->isVisible());
  desktop_.release(form_);
}

TEST_F(Window, TheCloseBoxAsksTheFormAndNothingElseCloses) {
  show(form_);
  int closes = 0;
  form_.onClose = [&] { ++closes; };
  window("SampleForm")->close();
  EXPECT_EQ(closes, 1);
  EXPECT_TRUE(window("SampleForm")->isVisible());
  form_.markClosed();
  EXPECT_FALSE(window("SampleForm")->isVisible());
}

TEST_F(Window, AHandlerMayReleaseItsOwnForm) {
  show(form_);
  form_.onClose = [&] {
    form_.markClosed();
    desktop_.release(form_);
  };
  window("SampleForm")->close();
  desktop_.processPendingMessages();
  form_.control("Text", 0).setText("alone");
  EXPECT_TRUE(form_.closed());
}

TEST_F(Window, MinimisingByTheUserRunsTheResizeHandlerOnce) {
  show(form_);
  int resizes = 0;
  form_.onResize = [&] {
    ++resizes;
    if (form_.windowState() == WindowState::kMinimized) form_.setVisible(false);
  };
  window("SampleForm")->setWindowState(Qt::WindowMinimized);
  desktop_.processPendingMessages();
  EXPECT_EQ(form_.windowState(), WindowState::kMinimized);
  EXPECT_EQ(resizes, 1);
  EXPECT_FALSE(window("SampleForm")->isVisible());

  form_.setWindowState(WindowState::kNormal);
  form_.setVisible(true);
  desktop_.processPendingMessages();
  EXPECT_TRUE(window("SampleForm")->isVisible());
  EXPECT_FALSE(window("SampleForm")->isMinimized());
  EXPECT_EQ(resizes, 2);
}

TEST_F(Window, MinimisingByTheProgramRunsTheResizeHandlerOnce) {
  show(form_);
  int resizes = 0;
  form_.onResize = [&] { ++resizes; };
  form_.setWindowState(WindowState::kMinimized);
  desktop_.processPendingMessages();
  EXPECT_EQ(resizes, 1);
  EXPECT_TRUE(window("SampleForm")->isMinimized());
}

struct KeyCase {
  QEvent::Type type;
  Qt::Key key;
  Qt::KeyboardModifiers reported;
  int expected;
};

TEST_F(Window, EveryKeyIsPreviewedWithTheModifiersAfterIt) {
  show(form_);
  QLineEdit* field = find<QLineEdit>(form_, "Text", 0);
  field->setFocus();
  std::vector<int> masks;
  form_.onKey = [&](int mask) { masks.push_back(mask); };
  constexpr auto kPress = QEvent::KeyPress;
  constexpr auto kRelease = QEvent::KeyRelease;
  for (const KeyCase& test : {
           KeyCase{kPress, Qt::Key_A, Qt::NoModifier, 0},
           // The modifier keys themselves: X11 reports the state before, others that after.
           KeyCase{kPress, Qt::Key_Shift, Qt::NoModifier, 1},
           KeyCase{kPress, Qt::Key_Shift, Qt::ShiftModifier, 1},
           KeyCase{kPress, Qt::Key_A, Qt::ShiftModifier, 1},
           KeyCase{kPress, Qt::Key_Control, Qt::ShiftModifier, 3},
           KeyCase{kRelease, Qt::Key_Control, Qt::ShiftModifier | Qt::ControlModifier, 1},
           KeyCase{kPress, Qt::Key_F5, Qt::ShiftModifier | Qt::AltModifier, 5},
           KeyCase{kRelease, Qt::Key_Shift, Qt::ShiftModifier, 0},
           KeyCase{kPress, Qt::Key_Tab, Qt::NoModifier, 0},
           KeyCase{kPress, Qt::Key_Alt, Qt::NoModifier, 4},
           KeyCase{kPress, Qt::Key_1, Qt::KeypadModifier, 0},
       }) {
    SCOPED_TRACE(test.key);
    field->setFocus();
    masks.clear();
    QKeyEvent event(test.type, test.key, test.reported);
    QApplication::sendEvent(field, &event);
    EXPECT_EQ(masks, std::vector{test.expected});
  }
}

TEST_F(Window, APreviewedKeyStillReachesItsControl) {
  show(form_);
  form_.onKey = [](int) {};
  QTest::keyClicks(find<QLineEdit>(form_, "Text", 0), "Aa");
  EXPECT_EQ(form_.control("Text", 0).text(), "Aa");
}

TEST_F(Window, EnterAndEscapePressTheirButtons) {
  show(form_);
  std::string pressed;
  for (const int index : {0, 1, 2}) {
    form_.control("Button", index).onClick = [&, index] { pressed += std::to_string(index); };
  }
  QWidget* field = find<QLineEdit>(form_, "Text", 0);
  field->setFocus();
  QTest::keyClick(field, Qt::Key_Return);
  QTest::keyClick(field, Qt::Key_Enter, Qt::KeypadModifier);
  QTest::keyClick(field, Qt::Key_Escape);
  QWidget* other = find<QPushButton>(form_, "Button", 2);
  other->setFocus();
  QTest::keyClick(other, Qt::Key_Return);
  QTest::keyClick(other, Qt::Key_Space);
  QTest::keyClick(other, Qt::Key_Escape);
  form_.control("Button", 0).setEnabled(false);
  field->setFocus();
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(pressed, "001221");
}

TEST_F(Window, TheFirstFieldInTabOrderHasTheFocus) {
  show(form_);
  EXPECT_EQ(window("SampleForm")->focusWidget(), find<QLineEdit>(form_, "Text", 1));
}

TEST_F(Window, ACommandHasTheFocusAgainAfterItsRun) {
  show(form_);
  QWidget* button = find<QPushButton>(form_, "Button", 2);
  button->setFocus();
  form_.control("Button", 2).onClick = [&] {
    for (const int index : {0, 1, 2}) form_.control("Button", index).setEnabled(false);
    EXPECT_NE(window("SampleForm")->focusWidget(), button);
    for (const int index : {0, 1, 2}) form_.control("Button", index).setEnabled(true);
  };
  QTest::keyClick(button, Qt::Key_Space);
  EXPECT_EQ(window("SampleForm")->focusWidget(), button);
}

TEST_F(Window, ADisabledControlDoesNotTakeTheFocusBackFromTheUser) {
  show(form_);
  QWidget* button = find<QPushButton>(form_, "Button", 2);
  QWidget* field = find<QLineEdit>(form_, "Text", 0);
  button->setFocus();
  form_.control("Button", 2).setEnabled(false);
  QTest::mouseClick(field, Qt::LeftButton);
  field->setFocus();
  form_.control("Button", 2).setEnabled(true);
  EXPECT_EQ(window("SampleForm")->focusWidget(), field);
}

TEST_F(Window, GrowsWithTheSystemsFont) {
  show(form_);
  const QSize before = window("SampleForm")->size();
  const QFont usual = QApplication::font();
  QFont large = usual;
  large.setPointSizeF(usual.pointSizeF() * 2);
  QApplication::setFont(large);
  desktop_.processPendingMessages();
  const QSize after = window("SampleForm")->size();
  QApplication::setFont(usual);
  EXPECT_GT(after.width(), before.width() * 1.8);
  EXPECT_GT(after.height(), before.height() * 1.8);
}

class Modal : public Window {
 protected:
  Modal() {
    owner_.setCaption("owner");
    show(owner_);
  }
  static constexpr std::array<ControlRow, 0> kNoControls{};
  const FormTable ownerTable_{"OwnerForm", "owner", 100, 50, false, kNoControls};
  Form owner_{ownerTable_};
};

TEST_F(Modal, ReturnsWhenTheDialogIsClosedByItsHandler) {
  form_.control("Button", 1).onClick = [&] { form_.markClosed(); };
  bool modal = false;
  soon([&] {
    QWidget* dialog = window("SampleForm");
    modal = dialog == QApplication::activeModalWidget() && dialog->parentWidget() != nullptr;
    QTest::keyClick(dialog->focusWidget(), Qt::Key_Escape);
  });
  desktop_.showModal(form_, owner_);
  EXPECT_TRUE(modal);
  EXPECT_TRUE(form_.closed());
}

TEST_F(Modal, ReturnsWhenTheCloseBoxIsUsed) {
  soon([&] { window("SampleForm")->close(); });
  desktop_.showModal(form_, owner_);
  EXPECT_TRUE(form_.closed());
}

TEST_F(Modal, StaysOnTopWhenTheFormSaysSo) {
  form_.setTopmost(true);
  bool onTop = false;
  soon([&] {
    onTop = window("SampleForm")->windowFlags().testFlag(Qt::WindowStaysOnTopHint);
    form_.markClosed();
  });
  desktop_.showModal(form_, owner_);
  EXPECT_TRUE(onTop);
}

TEST_F(Modal, AMessageBoxShowsTheTextAsItIs) {
  QString title;
  QString text;
  QMessageBox::Icon icon{};
  soon([&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    title = box->windowTitle();
    text = box->text();
    icon = box->icon();
    EXPECT_EQ(box->textFormat(), Qt::PlainText);
    EXPECT_EQ(box->standardButtons(), QMessageBox::Ok);
    box->button(QMessageBox::Ok)->click();
  });
  desktop_.messageBox(owner_, "集計管理", "<i>店舗コードが不明です。　　");
  EXPECT_EQ(title, QStringLiteral("集計管理"));
  EXPECT_EQ(text, QStringLiteral("<i>店舗コードが不明です。　　"));
  EXPECT_EQ(icon, QMessageBox::Critical);
}

TEST_F(Modal, TheFolderDialogReturnsAFolderOrNothing) {
  const QString folder = QDir::tempPath();
  QString title;
  soon([&] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    title = dialog->windowTitle();
    EXPECT_EQ(dialog->fileMode(), QFileDialog::Directory);
    dialog->reject();
  });
  EXPECT_EQ(desktop_.browseForFolder(owner_, "フォルダの選択"), "");
  EXPECT_EQ(title, QStringLiteral("フォルダの選択"));
  soon([&] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    dialog->setDirectory(QDir::rootPath());
    dialog->selectFile(folder);
    QMetaObject::invokeMethod(dialog, "accept");
  });
  EXPECT_EQ(desktop_.browseForFolder(owner_, "フォルダの選択"), folder.toStdString());
}

TEST_F(Modal, QuitEndsEveryLoop) {
  int ended = 0;
  soon([&] {
    soon([&] {
      soon([&] { desktop_.quit(); });
      desktop_.messageBox(owner_, "t", "t");
      ++ended;
    });
    desktop_.showModal(form_, owner_);
    ++ended;
  });
  desktop_.run();
  EXPECT_EQ(ended, 2);
  EXPECT_FALSE(form_.closed());
  // Nothing waits any more.
  desktop_.messageBox(owner_, "t", "t");
  desktop_.showModal(form_, owner_);
  desktop_.run();
}

class Menu : public Modal {
 protected:
  static QMenu* open() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

  MenuItem send_{"手動&転送"};
  MenuItem line_{"-"};
  MenuItem exit_{"常駐停止", false};
  std::vector<MenuItem*> items_{&send_, &line_, &exit_};
};

TEST_F(Menu, RunsTheChosenEntryAfterClosing) {
  bool menuWasOpen = true;
  int sent = 0;
  send_.onClick = [&] {
    ++sent;
    menuWasOpen = open() != nullptr;
  };
  soon([&] {
    const QList<QAction*> actions = open()->actions();
    ASSERT_EQ(actions.size(), 3);
    EXPECT_EQ(actions[0]->text(), QStringLiteral("手動&&転送"));
    EXPECT_TRUE(actions[1]->isSeparator());
    EXPECT_FALSE(actions[2]->isEnabled());
    QTest::keyClick(open(), Qt::Key_Down);
    QTest::keyClick(open(), Qt::Key_Return);
  });
  desktop_.popupMenu(owner_, items_);
  EXPECT_EQ(sent, 1);
  EXPECT_FALSE(menuWasOpen);
}

TEST_F(Menu, ClosesWithoutAChoice) {
  int sent = 0;
  send_.onClick = [&] { ++sent; };
  soon([&] { QTest::keyClick(open(), Qt::Key_Escape); });
  desktop_.popupMenu(owner_, items_);
  EXPECT_EQ(sent, 0);
}

TEST_F(Menu, GivesWayToAMessageBox) {
  bool menuWasOpen = true;
  soon([&] {
    soon([&] {
      menuWasOpen = open() != nullptr;
      QApplication::activeModalWidget()->close();
    });
    desktop_.messageBox(owner_, "t", "t");
  });
  desktop_.popupMenu(owner_, items_);
  EXPECT_FALSE(menuWasOpen);
}

TEST_F(Menu, EndsWithTheProgram) {
  soon([&] { desktop_.quit(); });
  desktop_.popupMenu(owner_, items_);
  EXPECT_EQ(open(), nullptr);
}

TEST_F(Window, ATimerTicksWhileEnabled) {
  int ticks = 0;
  const auto timer = desktop_.createTimer(std::chrono::milliseconds(20), [&] { ++ticks; });
  EXPECT_FALSE(timer->enabled());
  QTest::qWait(60);
  EXPECT_EQ(ticks, 0);
  timer->setEnabled(true);
  EXPECT_TRUE(QTest::qWaitFor([&] { return ticks >= 2; }, 5000));
  QTest::qSleep(50);  // one is due now
  timer->setEnabled(false);
  const int before = ticks;
  QTest::qWait(60);
  EXPECT_EQ(ticks, before);
}

TEST_F(Window, EnablingATimerAgainStartsAFullInterval) {
  int ticks = 0;
  const auto timer = desktop_.createTimer(std::chrono::milliseconds(300), [&] { ++ticks; });
  timer->setEnabled(true);
  QTest::qSleep(400);
  timer->setEnabled(true);
  desktop_.processPendingMessages();
  EXPECT_EQ(ticks, 0);
}

TEST_F(Window, ASignalAsksTheProgramToEnd) {
  int asked = 0;
  desktop_.setEndSessionHandler([&] {
    ++asked;
    desktop_.quit();
  });
  soon([] { std::raise(SIGTERM); });
  desktop_.run();
  EXPECT_EQ(asked, 1);
}

TEST_F(Window, WorksWithoutANotificationArea) {
  desktop_.changeTrayIcon(TrayImage::kFailure, "none yet");
  desktop_.addTrayIcon(form_, TrayImage::kNormal, "るりはなリンク集計管理", [] {});
  desktop_.changeTrayIcon(TrayImage::kFailure, "るりはなリンク集計管理");
  desktop_.processPendingMessages();
  desktop_.removeTrayIcon();
  desktop_.removeTrayIcon();
}

}  // namespace
}  // namespace karvel
