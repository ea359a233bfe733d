#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "form/form.h"

namespace karvel {

/// What of a typed or pasted UTF-8 text may enter a one-line text box in which `staying` characters
/// stay: no line ends and other control characters, none that the row's filter refuses, and no more
/// than its length allows. Text that stands in the box already is never changed. When nothing of a
/// non-empty text is accepted, the edit does not take place: what was selected stays selected.
[[nodiscard]] std::string acceptedInsertion(const ControlRow& row, std::string_view inserted,
                                            std::size_t staying);

/// The keyboard focus of a text box as controls, windows and the mouse give and take it.
class TextBoxFocus {
 public:
  explicit TextBoxFocus(Control& textBox) : textBox_(textBox) {}

  /// The focus has come. It is reported to the control, unless it merely comes back together with
  /// the window.
  void arrive(bool byClick);
  /// The focus goes; `withWindow` when another window or a menu takes it.
  void leave(bool withWindow) { keptByWindow_ = withWindow; }
  /// The mouse button has been released. The click that brought the focus has placed the caret and
  /// so cleared the selection made on arrival: it is requested again, unless the user has selected
  /// something with the mouse.
  void endClick(bool somethingSelected);

 private:
  Control& textBox_;
  bool keptByWindow_ = false;
  bool arrivedByClick_ = false;
};

}  // namespace karvel
