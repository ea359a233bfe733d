#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace karvel {

/// One reply of an FTP server, put together from the lines that arrive.
class FtpReply {
 public:
  /// Takes a line without its line end. False when no FTP server would say that: the reply does
  /// not begin with a code, or is longer than kLongest. Its text is kept even so.
  [[nodiscard]] bool addLine(std::string_view line);

  /// True once the last line of the reply is there.
  [[nodiscard]] bool complete() const { return complete_; }
  /// The three digits of the reply; 0 before its first line.
  [[nodiscard]] int code() const { return code_; }
  /// "1xx": another reply to the same command will follow.
  [[nodiscard]] bool preliminary() const { return code_ < 200; }
  /// "2xx": done.
  [[nodiscard]] bool positive() const { return code_ >= 200 && code_ < 300; }
  /// "3xx": done so far, another command is expected.
  [[nodiscard]] bool intermediate() const { return code_ >= 300 && code_ < 400; }

  /// The lines so far, parted by CR LF.
  [[nodiscard]] const std::string& text() const { return text_; }

  static constexpr std::size_t kLongest = 64 * 1024;  ///< bytes

 private:
  int code_ = 0;
  bool complete_ = false;
  std::string text_;
};

}  // namespace karvel
