#include "platform/windows/desktop/win32_keys.h"

namespace karvel {
namespace {

bool held(int key) {
  return GetKeyState(key) < 0;
}

}  // namespace

bool isKeyMessage(const MSG& message) {
  return message.message == WM_KEYDOWN || message.message == WM_KEYUP ||
         message.message == WM_SYSKEYDOWN || message.message == WM_SYSKEYUP;
}

int shiftMask() {
  return (held(VK_SHIFT) ? 1 : 0) + (held(VK_CONTROL) ? 2 : 0) + (held(VK_MENU) ? 4 : 0);
}

bool isRepeatedAnswer(const MSG& message) {
  constexpr LPARAM kWasDown = LPARAM{1} << 30;
  const bool answer = message.wParam == VK_RETURN || message.wParam == VK_ESCAPE;
  return message.message == WM_KEYDOWN && answer && (message.lParam & kWasDown) != 0;
}

int arrowStep(const MSG& message) {
  if (message.message != WM_KEYDOWN) return 0;
  switch (message.wParam) {
    case VK_LEFT:
    case VK_UP:
      return -1;
    case VK_RIGHT:
    case VK_DOWN:
      return 1;
    default:
      return 0;
  }
}

}  // namespace karvel
