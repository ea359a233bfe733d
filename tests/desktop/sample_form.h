#pragma once

#include <array>

#include "form/form.h"

namespace karvel {

/// One control of every kind, and every way in which a row can be special.
inline constexpr std::array kSampleControls{
    ControlRow{.kind = ControlKind::kLabel, .name = "Label", .rect = {8, 8, 180, 10}},
    ControlRow{.kind = ControlKind::kTextBox,
               .name = "Text",
               .index = 0,
               .rect = {8, 20, 80, 14},
               .tabOrder = 1,
               .inputMethod = InputMethod::kHiragana},
    ControlRow{.kind = ControlKind::kTextBox,
               .name = "Text",
               .index = 1,
               .rect = {8, 36, 80, 14},
               .tabOrder = 0,
               .style = ControlRow::kDigitsOnly,
               .maxLength = 5},
    ControlRow{.kind = ControlKind::kTextBox,
               .name = "Text",
               .index = 2,
               .rect = {8, 52, 80, 14},
               .tabOrder = 2,
               .style = ControlRow::kPassword,
               .maxLength = 8},
    ControlRow{.kind = ControlKind::kOptionButton,
               .name = "Option",
               .index = 0,
               .caption = "A & _B",
               .rect = {100, 20, 80, 12},
               .tabOrder = 3},
    ControlRow{.kind = ControlKind::kOptionButton,
               .name = "Option",
               .index = 1,
               .caption = "C",
               .rect = {100, 34, 80, 12},
               .tabOrder = 4},
    ControlRow{.kind = ControlKind::kCheckBox,
               .name = "Check",
               .caption = "D",
               .rect = {100, 48, 80, 12},
               .tabOrder = 5},
    ControlRow{.kind = ControlKind::kListBox, .name = "List", .style = ControlRow::kHidden},
    ControlRow{.kind = ControlKind::kButton,
               .name = "Button",
               .index = 0,
               .caption = "Q&A",
               .rect = {8, 104, 60, 14},
               .tabOrder = 6,
               .style = ControlRow::kDefaultButton},
    ControlRow{.kind = ControlKind::kButton,
               .name = "Button",
               .index = 1,
               .caption = "ｷｬﾝｾﾙ",
               .rect = {72, 104, 60, 14},
               .tabOrder = 7,
               .style = ControlRow::kCancelButton},
    ControlRow{.kind = ControlKind::kButton,
               .name = "Button",
               .index = 2,
               .caption = "other",
               .rect = {136, 104, 60, 14},
               .tabOrder = 8},
};

inline const FormTable kSampleTable{"SampleForm", "sample", 200, 124, true, kSampleControls};

}  // namespace karvel
