#include "platform/windows/desktop/win32_dialogs.h"

#include <objbase.h>
#include <shlobj.h>

#include <array>
#include <memory>
#include <type_traits>

#include "form/form.h"
#include "platform/windows/desktop/win32_control.h"
#include "platform/windows/system/wide_text.h"

namespace karvel {
namespace {

struct TaskMemory {
  void operator()(void* block) const { CoTaskMemFree(block); }
};
struct MenuDestroyer {
  void operator()(HMENU menu) const { DestroyMenu(menu); }
};

/// The folder dialog lives on COM objects.
class ComApartment {
 public:
  ComApartment() : initialized_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
  ~ComApartment() {
    if (initialized_) CoUninitialize();
  }
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;

 private:
  bool initialized_;
};

int CALLBACK selectFirst(HWND dialog, UINT event, LPARAM, LPARAM path) {
  if (event == BFFM_INITIALIZED) SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, path);
  return 0;
}

constexpr std::size_t kFirstCommand = 1;

void append(HMENU menu, std::size_t command, const MenuItem& item) {
  if (item.caption == "-") {
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    return;
  }
  const std::wstring caption = literalCaption(item.caption);
  AppendMenuW(menu, item.enabled ? MF_ENABLED : MF_GRAYED, command, caption.c_str());
}

}  // namespace

void showMessage(HWND owner, const std::string& title, const std::string& text) {
  const UINT front = owner == nullptr ? MB_SETFOREGROUND : 0;
  MessageBoxW(owner, toWide(text).c_str(), toWide(title).c_str(), MB_ICONSTOP | MB_OK | front);
}

std::string chooseFolder(HWND owner, const std::string& title, const std::string& start) {
  const ComApartment apartment;
  const std::wstring first = toWide(start);
  const std::wstring heading = toWide(title);
  BROWSEINFOW browse{};
  browse.hwndOwner = owner;
  browse.lpszTitle = heading.c_str();
  browse.ulFlags = BIF_RETURNONLYFSDIRS;
  browse.lpfn = &selectFirst;
  browse.lParam = reinterpret_cast<LPARAM>(first.c_str());
  const std::unique_ptr<std::remove_pointer_t<PIDLIST_ABSOLUTE>, TaskMemory> chosen(
      SHBrowseForFolderW(&browse));
  std::array<wchar_t, MAX_PATH> path{};
  if (!chosen || SHGetPathFromIDListW(chosen.get(), path.data()) == FALSE) return {};
  return fromWide(path.data());
}

const MenuItem* chooseFromMenu(HWND owner, const std::vector<MenuItem*>& items) {
  const std::unique_ptr<std::remove_pointer_t<HMENU>, MenuDestroyer> menu(CreatePopupMenu());
  for (std::size_t i = 0; i < items.size(); ++i) append(menu.get(), kFirstCommand + i, *items[i]);
  POINT pointer{};
  GetCursorPos(&pointer);
  const auto command = static_cast<std::size_t>(
      TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_NONOTIFY, static_cast<int>(pointer.x),
                     static_cast<int>(pointer.y), 0, owner, nullptr));
  // Lets the switch to the window that was clicked instead take place at once.
  PostMessageW(owner, WM_NULL, 0, 0);
  return command >= kFirstCommand ? items[command - kFirstCommand] : nullptr;
}

}  // namespace karvel
