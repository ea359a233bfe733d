#pragma once

#include <windows.h>

namespace karvel {

/// A press or a release.
[[nodiscard]] bool isKeyMessage(const MSG& message);

/// The modifiers as they are after the message that was retrieved last: 1 Shift + 2 Ctrl + 4 Alt.
[[nodiscard]] int shiftMask();

/// Enter or Escape, sent once more because the key is held down.
[[nodiscard]] bool isRepeatedAnswer(const MSG& message);

/// -1 for a press of the arrows left and up, 1 for right and down, 0 for all else.
[[nodiscard]] int arrowStep(const MSG& message);

}  // namespace karvel
