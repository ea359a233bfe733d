#include "platform/windows/desktop/win32_keys.h"

namespace karvel {

bool isKeyMessage(const MSG& message) {
  return message.message == WM_KEYDOWN || message.message == WM_KEYUP ||
         message.message == WM_SYSKEYDOWN || message.message == WM_SYSKEYUP;
}

bool isPress(const MSG& message) {
  switch (message.message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      return true;
    default:
      return false;
  }
}

int shiftMask() {
  const auto held = [](int key) { return GetKeyState(key) < 0; };
  return (held(VK_SHIFT) ? 1 : 0) + (held(VK_CONTROL) ? 2 : 0) + (held(VK_MENU) ? 4 : 0);
}

AnswerKey answerKeyOf(const MSG& message) {
  if (message.message != WM_KEYDOWN) return AnswerKey::kNone;
  if (message.wParam == VK_RETURN) return AnswerKey::kEnter;
  return message.wParam == VK_ESCAPE ? AnswerKey::kEscape : AnswerKey::kNone;
}

bool isRepeated(const MSG& message) {
  constexpr LPARAM kWasDown = LPARAM{1} << 30;
  return (message.lParam & kWasDown) != 0;
}

int arrowStepOf(const MSG& message) {
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
