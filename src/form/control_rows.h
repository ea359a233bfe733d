#pragma once

#include "form/form.h"

/// Short ways to write the rows of a form's table.
namespace karvel::rows {

constexpr ControlRow label(int index, const char* caption, Rect rect,
                           std::uint32_t style = ControlRow::kPlain) {
  return {.kind = ControlKind::kLabel,
          .name = "Label1",
          .index = index,
          .caption = caption,
          .rect = rect,
          .style = style};
}

constexpr ControlRow note(int index, const char* caption, Rect rect) {
  return label(index, caption, rect, ControlRow::kNote);
}

/// `spoken` is the field's accessible name.
constexpr ControlRow textBox(int index, const char* spoken, Rect rect, int tabOrder,
                             std::uint32_t style = ControlRow::kPlain, int maxLength = 0,
                             InputMethod inputMethod = InputMethod::kOff) {
  return {.kind = ControlKind::kTextBox,
          .name = "Text1",
          .index = index,
          .rect = rect,
          .tabOrder = tabOrder,
          .style = style,
          .maxLength = maxLength,
          .inputMethod = inputMethod,
          .accessibleName = spoken};
}

/// A field that shows what is edited elsewhere. Without a label of its own it says in its tool tip
/// what it shows.
constexpr ControlRow display(int index, const char* meaning, Rect rect, int maxLength = 0) {
  ControlRow row =
      textBox(index, meaning, rect, ControlRow::kNoTab, ControlRow::kDisabled, maxLength);
  row.toolTip = meaning;
  return row;
}

constexpr ControlRow option(const char* name, int index, const char* caption, Rect rect,
                            int tabOrder, std::uint32_t style = ControlRow::kPlain) {
  return {.kind = ControlKind::kOptionButton,
          .name = name,
          .index = index,
          .caption = caption,
          .rect = rect,
          .tabOrder = tabOrder,
          .style = style};
}

constexpr ControlRow button(const char* name, int index, const char* caption, Rect rect,
                            int tabOrder, std::uint32_t style = ControlRow::kPlain,
                            const char* toolTip = "") {
  return {.kind = ControlKind::kButton,
          .name = name,
          .index = index,
          .caption = caption,
          .rect = rect,
          .tabOrder = tabOrder,
          .style = style,
          .toolTip = toolTip};
}

constexpr ControlRow checkBox(const char* name, const char* caption, Rect rect, int tabOrder,
                              std::uint32_t style = ControlRow::kPlain) {
  return {.kind = ControlKind::kCheckBox,
          .name = name,
          .caption = caption,
          .rect = rect,
          .tabOrder = tabOrder,
          .style = style};
}

/// A frame or a line.
constexpr ControlRow decoration(ControlKind kind, const char* name, Rect rect) {
  return {.kind = kind, .name = name, .rect = rect};
}

/// A control that holds values and is never seen.
constexpr ControlRow hidden(ControlRow row) {
  row.style |= ControlRow::kHidden;
  row.tabOrder = ControlRow::kNoTab;
  return row;
}

}  // namespace karvel::rows
