#pragma once

#include <QValidator>
#include <functional>

namespace karvel {

/// Decides what of a typed or pasted piece enters a one-line field: control characters and those
/// that `accepts` refuses are left out, and so is what exceeds the maximum length. What stood in
/// the field already is never touched.
class QtInsertionFilter final : public QValidator {
 public:
  using Accepts = std::function<bool(char32_t)>;
  /// `maxLength` in characters; 0 is no limit.
  QtInsertionFilter(int maxLength, Accepts accepts);

  /// The text that the program puts into the field next: it passes unfiltered.
  void expect(const QString& text) { known_ = text; }

  State validate(QString& input, int& cursor) const override;

 private:
  [[nodiscard]] QString accepted(const QString& inserted, qsizetype charactersKept) const;

  qsizetype maxLength_;
  Accepts accepts_;
  mutable QString known_;  ///< the field's text before the edit that is being judged
};

}  // namespace karvel
