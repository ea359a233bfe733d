#include "platform/linux/desktop/qt_dialogs.h"

#include <QApplication>
#include <QCursor>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>

#include "form/form.h"
#include "platform/linux/desktop/qt_text.h"

namespace karvel {

void showQtMessage(QWidget* owner, const std::string& title, const std::string& text) {
  QMessageBox box(owner);
  box.setIcon(QMessageBox::Critical);
  box.setWindowTitle(literalTitle(title));
  box.setTextFormat(Qt::PlainText);
  box.setText(toQt(text));
  box.setStandardButtons(QMessageBox::Ok);
  box.exec();
}

std::string chooseQtFolder(QWidget* owner, const std::string& title, const std::string& start) {
  const bool begins = !start.empty() && QFileInfo(toQt(start)).isDir();
  QFileDialog dialog(owner, toQt(title), begins ? toQt(start) : QDir::homePath());
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  dialog.setLabelText(QFileDialog::Accept, QStringLiteral("OK"));
  dialog.setLabelText(QFileDialog::Reject, QStringLiteral("ｷｬﾝｾﾙ"));
  dialog.setLabelText(QFileDialog::LookIn, QStringLiteral("場所:"));
  dialog.setLabelText(QFileDialog::FileName, QStringLiteral("フォルダ:"));
  dialog.setLabelText(QFileDialog::FileType, QStringLiteral("種類:"));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return fromQt(QDir::toNativeSeparators(dialog.selectedFiles().constFirst()));
}

MenuItem* chooseFromQtMenu(const std::vector<MenuItem*>& items) {
  QMenu menu;
  for (MenuItem* item : items) {
    if (item->caption == "-") {
      menu.addSeparator();
      continue;
    }
    QAction* action = menu.addAction(literalCaption(item->caption));
    action->setEnabled(item->enabled);
    action->setData(QVariant::fromValue(static_cast<void*>(item)));
  }
  const QAction* chosen = menu.exec(QCursor::pos());
  return chosen == nullptr ? nullptr : static_cast<MenuItem*>(chosen->data().value<void*>());
}

void closeQtPopup() {
  while (QWidget* popup = QApplication::activePopupWidget()) {
    if (!popup->close()) return;
  }
}

}  // namespace karvel
