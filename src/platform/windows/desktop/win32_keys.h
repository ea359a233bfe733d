#pragma once

#include <windows.h>

#include "form/keyboard.h"

namespace karvel {

/// What a message of the keyboard or the mouse means to a form.

/// A press or a release of a key.
[[nodiscard]] bool isKeyMessage(const MSG& message);

/// A press of a key or a mouse button.
[[nodiscard]] bool isPress(const MSG& message);

/// The modifiers as they are after the message that was retrieved last: 1 Shift + 2 Ctrl + 4 Alt.
[[nodiscard]] int shiftMask();

/// The answering key that is pressed, if it is one.
[[nodiscard]] AnswerKey answerKeyOf(const MSG& message);

/// Of a pressed key: it is sent once more because it is held down.
[[nodiscard]] bool isRepeated(const MSG& message);

/// -1 for a press of the arrows left and up, 1 for right and down, 0 for all else.
[[nodiscard]] int arrowStepOf(const MSG& message);

}  // namespace karvel
