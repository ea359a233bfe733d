#pragma once

#include <string>
#include <vector>

class QWidget;

namespace karvel {

struct MenuItem;

/// The desktop's small dialogs. Each returns when the user has answered it or the message loop is
/// ended. `owner` is the window that it stands above, or nullptr.

void showQtMessage(QWidget* owner, const std::string& title, const std::string& text);

/// The chosen folder's path, or "" when cancelled. Begins at the folder `start`, or at home where
/// there is none.
std::string chooseQtFolder(QWidget* owner, const std::string& title, const std::string& start);

/// A menu at the mouse pointer; the chosen entry, or nullptr.
MenuItem* chooseFromQtMenu(const std::vector<MenuItem*>& items);

/// Closes an open menu: its grab of the mouse would keep what comes next from being answered.
void closeQtPopup();

}  // namespace karvel
