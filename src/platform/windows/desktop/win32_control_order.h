#pragma once

#include <vector>

#include "form/form.h"

namespace karvel {

/// The form's controls from the front to the back, in which order the keyboard reaches them. A
/// label stands right before what it explains, as readers of the screen meet it; frames and lines
/// lie behind all others.
[[nodiscard]] std::vector<Control*> inStackingOrder(const Form& form);

/// Options of the same name, of which one can be selected.
[[nodiscard]] bool excludeEachOther(const Control& left, const Control& right);

/// The next enabled option of the same name, or with step -1 the previous one, round and round;
/// nullptr when the control is no option.
[[nodiscard]] Control* neighbouringOption(const Form& form, const Control& option, int step);

}  // namespace karvel
