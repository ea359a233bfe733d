#pragma once

#include <windows.h>

namespace karvel {

/// A function that only newer systems have, or nullptr. The library must be loaded already.
template <typename Function>
Function* newerFunction(const wchar_t* library, const char* name) {
  const HMODULE module = GetModuleHandleW(library);
  if (module == nullptr) return nullptr;
  // By way of a plain function type: the compiler warns of a direct cast between signatures.
  return reinterpret_cast<Function*>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

}  // namespace karvel
