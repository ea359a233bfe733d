#include "form/text_entry.h"

#include <limits>
#include <utility>

#include "text/strings.h"

namespace karvel {
namespace {

/// C0 and C1 controls, and the Unicode separators that toolkits put in place of line ends.
bool breaksTheLine(std::string_view character) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(character[i]); };
  if (character.size() == 1) return byte(0) < 0x20 || byte(0) == 0x7F;
  if (character.size() == 2) return byte(0) == 0xC2 && byte(1) < 0xA0;
  return character == "\u2028" || character == "\u2029";
}

bool passesFilter(const ControlRow& row, std::string_view character) {
  if ((row.style & ControlRow::kDigitsOnly) == 0) return true;
  return character.size() == 1 && character[0] >= '0' && character[0] <= '9';
}

}  // namespace

std::string acceptedInsertion(const ControlRow& row, std::string_view inserted,
                              std::size_t staying) {
  const std::size_t limit = row.maxLength > 0 ? static_cast<std::size_t>(row.maxLength)
                                              : std::numeric_limits<std::size_t>::max();
  std::string accepted;
  while (!inserted.empty() && staying < limit) {
    const std::string_view character = firstCharacters(inserted, 1);
    inserted.remove_prefix(character.size());
    if (breaksTheLine(character) || !passesFilter(row, character)) continue;
    accepted += character;
    ++staying;
  }
  return accepted;
}

void TextBoxFocus::arrive(bool byClick) {
  if (std::exchange(keptByWindow_, false)) return;
  arrivedByClick_ = byClick;
  textBox_.focus();
}

void TextBoxFocus::endClick(bool somethingSelected) {
  if (!std::exchange(arrivedByClick_, false) || somethingSelected) return;
  if (textBox_.selectionLength() == 0) return;
  textBox_.setSelection(textBox_.selectionStart(), textBox_.selectionLength());
}

}  // namespace karvel
