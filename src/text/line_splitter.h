#pragma once

#include <string>
#include <string_view>

namespace karvel {

/// Cuts a text that arrives in pieces into lines. A line ends at LF; a CR before it belongs to the
/// line end. A last line without an end counts too.
class LineSplitter {
 public:
  /// A longer line is passed over: no record is nearly as long, and memory stays bounded.
  static constexpr std::size_t kLongestLine = 16 * 1024 * 1024;

  /// Hands every line that ends in `piece` to `takeLine`.
  template <typename TakeLine>
  void feed(std::string_view piece, TakeLine&& takeLine) {
    if (!rest_.empty() || skipping_) piece = completeRest(piece, takeLine);
    for (auto end = piece.find('\n'); end != std::string_view::npos; end = piece.find('\n')) {
      takeLine(withoutCarriageReturn(piece.substr(0, end)));
      piece.remove_prefix(end + 1);
    }
    keep(piece);
  }

  /// Hands over what stands behind the last line end, if anything.
  template <typename TakeLine>
  void finish(TakeLine&& takeLine) {
    if (!rest_.empty() && !skipping_) takeLine(withoutCarriageReturn(rest_));
    rest_.clear();
    skipping_ = false;
  }

 private:
  template <typename TakeLine>
  std::string_view completeRest(std::string_view piece, TakeLine& takeLine) {
    const auto end = piece.find('\n');
    if (end == std::string_view::npos) {
      keep(piece);
      return {};
    }
    keep(piece.substr(0, end));
    finish(takeLine);
    return piece.substr(end + 1);
  }

  void keep(std::string_view part) {
    if (skipping_ || rest_.size() + part.size() > kLongestLine) {
      skipping_ = true;
      rest_ = std::string();
    } else {
      rest_.append(part);
    }
  }

  static std::string_view withoutCarriageReturn(std::string_view line) {
    return !line.empty() && line.back() == '\r' ? line.substr(0, line.size() - 1) : line;
  }

  std::string rest_;  ///< the beginning of a line whose end has not arrived yet
  bool skipping_ = false;
};

}  // namespace karvel
