#pragma once

#include <cstdint>
#include <vector>

#include "form/form.h"

namespace karvel {

/// How the keyboard moves about a form. Hidden controls take no part in any of it.

/// The shown controls in the order in which the keyboard and screen readers meet them, from the
/// front of the stack to its back: by tab order, a label right before what it explains, and frames
/// and lines behind all others.
[[nodiscard]] std::vector<Control*> stackingOrder(const Form& form);

/// Option buttons of the same name, of which one can be selected.
[[nodiscard]] bool excludeEachOther(const Control& left, const Control& right);

/// Whether Tab stops at the control while it is enabled. Options are entered at the selected one,
/// or, when none is selected, at each.
[[nodiscard]] bool isTabStop(const Form& form, const Control& control);

/// The enabled tab stop after `from`, beginning again at the first after the last; from nullptr the
/// first. nullptr when there is none.
[[nodiscard]] Control* nextTabStop(const Form& form, const Control* from);

/// Where an arrow key leads from a control: the next enabled option of its name, or with step -1
/// the previous one, round and round. nullptr from a control that is no option: there an arrow key
/// moves no focus.
[[nodiscard]] Control* neighbouringOption(const Form& form, const Control& from, int step);

enum class AnswerKey : std::uint8_t { kNone, kEnter, kEscape };

/// The button that an answering key presses: Enter the focused button, or else the default one;
/// Escape the cancel button. nullptr when there is none, or when the key only repeats because it is
/// held down: it must not press again, nor answer the next window.
[[nodiscard]] Control* answeredBy(const Form& form, AnswerKey key, bool repeats,
                                  const Control* focused);

/// Keeps the focus while its control is disabled, as a command is while it runs.
class FocusKeeper {
 public:
  explicit FocusKeeper(const Form& form) : form_(form) {}

  /// A control may have been enabled or disabled; `focused` has had the focus until then. The
  /// control that is to receive the focus now, or nullptr when it stays: a focused control that is
  /// disabled passes it to the next tab stop, and has it back with its enabling.
  [[nodiscard]] Control* afterChange(Control& changed, const Control* focused);
  /// The user has pressed a key or a mouse button: the focus stays where that puts it.
  void userActs() { waiting_ = nullptr; }

 private:
  const Form& form_;
  Control* waiting_ = nullptr;  ///< had the focus until it was disabled
};

}  // namespace karvel
