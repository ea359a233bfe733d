#include "platform/linux/desktop/qt_insertion_filter.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace karvel {
namespace {

/// Also the separators that Qt makes of a pasted line end.
bool breaksTheLine(char32_t character) {
  const QChar::Category category = QChar::category(character);
  return category == QChar::Other_Control || category == QChar::Separator_Line ||
         category == QChar::Separator_Paragraph;
}

qsizetype commonStart(const QString& left, const QString& right) {
  const auto ends = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
  return ends.first - left.begin();
}

qsizetype commonEnd(const QString& left, const QString& right, qsizetype start) {
  qsizetype length = 0;
  const qsizetype limit = std::min(left.size(), right.size()) - start;
  while (length < limit && left[left.size() - 1 - length] == right[right.size() - 1 - length]) {
    ++length;
  }
  return length;
}

qsizetype characterCount(const QString& text) {
  return std::count_if(text.begin(), text.end(), [](QChar unit) { return !unit.isLowSurrogate(); });
}

}  // namespace

QtInsertionFilter::QtInsertionFilter(int maxLength, Accepts accepts)
    : maxLength_(maxLength > 0 ? maxLength : std::numeric_limits<int>::max()),
      accepts_(std::move(accepts)) {
}

QValidator::State QtInsertionFilter::validate(QString& input, int& cursor) const {
  if (input == known_) return Acceptable;
  const qsizetype start = commonStart(known_, input);
  const qsizetype end = commonEnd(known_, input, start);
  const QString before = input.first(start);
  const QString after = input.last(end);
  const QString inserted = input.sliced(start, input.size() - start - end);
  const QString kept = accepted(inserted, characterCount(before) + characterCount(after));
  // Nothing was typed then: also the selection that it would have replaced stays.
  if (kept.isEmpty() && !inserted.isEmpty()) return Invalid;
  if (kept != inserted) {
    input = before + kept + after;
    cursor = static_cast<int>(start + kept.size());
  }
  known_ = input;
  return Acceptable;
}

QString QtInsertionFilter::accepted(const QString& inserted, qsizetype charactersKept) const {
  QString kept;
  qsizetype room = maxLength_ - charactersKept;
  for (const char32_t character : inserted.toStdU32String()) {
    if (room <= 0) break;
    if (breaksTheLine(character) || !accepts_(character)) continue;
    kept.append(QString::fromUcs4(&character, 1));
    --room;
  }
  return kept;
}

}  // namespace karvel
