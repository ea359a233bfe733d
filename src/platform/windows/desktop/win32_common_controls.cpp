#include "platform/windows/desktop/win32_common_controls.h"

#include <windows.h>

#include <commctrl.h>

#include "platform/windows/system/win32_module.h"

namespace karvel {

void registerCommonControls() {
  constexpr const wchar_t* kLibrary = L"comctl32.dll";
  static const HMODULE library = LoadLibraryW(kLibrary);
  if (library == nullptr) return;
  const auto registerClasses =
      findFunction<BOOL WINAPI(const INITCOMMONCONTROLSEX*)>(kLibrary, "InitCommonControlsEx");
  const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES};
  if (registerClasses != nullptr) registerClasses(&classes);
}

}  // namespace karvel
