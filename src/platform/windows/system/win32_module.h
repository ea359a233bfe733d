#pragma once

#include <windows.h>

namespace karvel {

/// A function that not every system has, or nullptr. The library must be loaded already.
template <typename Function>
Function* findFunction(const wchar_t* library, const char* name) {
  const HMODULE module = GetModuleHandleW(library);
  if (module == nullptr) return nullptr;
  // By way of a plain function type: the compiler warns of a direct cast between signatures.
  return reinterpret_cast<Function*>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

}  // namespace karvel
