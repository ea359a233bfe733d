#pragma once

#include <vector>

#include "platform/form.h"

namespace karvel {

/// The form's controls from the front to the back, in which order the keyboard reaches them. A
/// label stands right before the field that it explains, whence readers of the screen take the
/// field's name; frames and lines lie behind all others.
[[nodiscard]] std::vector<Control*> inStackingOrder(const Form& form);

/// The next enabled option of the same name, or with step -1 the previous one, round and round;
/// nullptr when the control is no option.
[[nodiscard]] Control* neighbouringOption(const Form& form, const Control& option, int step);

}  // namespace karvel
