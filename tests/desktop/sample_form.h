#pragma once

#include <array>

#include "form/control_rows.h"

namespace karvel {

/// One control of every kind, and every way in which a row can be special.
inline constexpr std::array kSampleControls{
    rows::label(0, "", {8, 8, 180, 10}),
    rows::textBox(0, "", {8, 20, 80, 14}, 1, ControlRow::kPlain, 0, InputMethod::kHiragana),
    rows::textBox(1, "", {8, 36, 80, 14}, 0, ControlRow::kDigitsOnly, 5),
    rows::textBox(2, "", {8, 52, 80, 14}, 2, ControlRow::kPassword, 8),
    rows::option("Option", 0, "A & _B", {100, 20, 80, 12}, 3),
    rows::option("Option", 1, "C", {100, 34, 80, 12}, 4),
    rows::checkBox("Check", "D", {100, 48, 80, 12}, 5),
    rows::button("Button", 0, "Q&A", {8, 104, 60, 14}, 6, ControlRow::kDefaultButton),
    rows::button("Button", 1, "ｷｬﾝｾﾙ", {72, 104, 60, 14}, 7, ControlRow::kCancelButton),
    rows::button("Button", 2, "other", {136, 104, 60, 14}, 8),
};

inline const FormTable kSampleTable{"SampleForm", "sample", 200, 124, true, kSampleControls};

}  // namespace karvel
