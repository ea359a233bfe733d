#include "platform/windows/desktop/tasuku.h"

#include <utility>

namespace karvel {
namespace {

/// The window property that leads from the window to its object.
constexpr const wchar_t* kProperty = L"karvel.Tasuku";

}  // namespace

Tasuku::Tasuku(HWND window, std::function<void()> onRightButtonUp)
    : window_(window), onRightButtonUp_(std::move(onRightButtonUp)) {
  SetPropW(window_, kProperty, this);
  OldWndProc = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Task_WndProc)));
}

Tasuku::~Tasuku() {
  SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(OldWndProc));
  RemovePropW(window_, kProperty);
}

LRESULT CALLBACK Tasuku::Task_WndProc(HWND window, UINT message, WPARAM first, LPARAM second) {
  const auto* self = static_cast<const Tasuku*>(GetPropW(window, kProperty));
  if (self == nullptr) return DefWindowProcW(window, message, first, second);
  const WNDPROC previous = self->OldWndProc;
  if (message == kCallbackMessage && second == WM_RBUTTONUP) {
    const std::function<void()> handler = self->onRightButtonUp_;
    handler();
  }
  return CallWindowProcW(previous, window, message, first, second);
}

}  // namespace karvel
