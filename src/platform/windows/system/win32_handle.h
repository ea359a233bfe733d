#pragma once

#include <windows.h>

#include <memory>

namespace karvel {

struct HandleCloser {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};

/// A kernel object's handle, closed when it goes out of scope. Null is none.
using Win32Handle = std::unique_ptr<HANDLE, HandleCloser>;

}  // namespace karvel
