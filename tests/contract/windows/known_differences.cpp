#include "contract/known_differences.h"

#include <windows.h>

namespace karvel {

bool differsHere(Difference) {
  static const bool wine =
      GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
  return wine;
}

}  // namespace karvel
