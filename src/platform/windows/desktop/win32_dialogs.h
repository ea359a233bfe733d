#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace karvel {

struct MenuItem;

/// The desktop's small dialogs. Each returns when the user has answered it or the message loop is
/// ended. `owner` is the window that it stands above, or nullptr.

void showMessage(HWND owner, const std::string& title, const std::string& text);

/// The chosen folder's path, or "" when cancelled. `start` is selected first if it is a folder.
[[nodiscard]] std::string chooseFolder(HWND owner, const std::string& title,
                                       const std::string& start);

/// A menu at the mouse pointer; the chosen entry, or nullptr. `owner` is needed here and should be
/// the foreground window, or else a click elsewhere would leave the menu open.
[[nodiscard]] const MenuItem* chooseFromMenu(HWND owner, const std::vector<MenuItem*>& items);

}  // namespace karvel
