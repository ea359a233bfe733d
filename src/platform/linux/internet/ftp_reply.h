#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace karvel {

/// The latest reply of an FTP server, put together from the lines that arrive.
class FtpReply {
 public:
  /// Takes one line with its line end. A line after a complete reply begins the next reply.
  void addLine(std::string_view line);
  void clear() { *this = FtpReply(); }

  /// True once the last line of the reply is there.
  [[nodiscard]] bool complete() const { return code_ != 0; }
  /// The three digits of a complete reply, otherwise 0.
  [[nodiscard]] int code() const { return code_; }
  /// "1xx": the server has begun a transfer and will reply once more.
  [[nodiscard]] bool preliminary() const { return code_ >= 100 && code_ < 200; }
  [[nodiscard]] bool refused() const { return code_ >= 400; }

  /// The beginning of the reply, at most kTextLimit bytes, its lines parted by CR LF.
  [[nodiscard]] const std::string& text() const { return text_; }
  /// All bytes of the reply so far, those beyond kTextLimit included.
  [[nodiscard]] std::size_t size() const { return size_; }

  static constexpr std::size_t kTextLimit = 1024;

 private:
  int code_ = 0;
  std::size_t size_ = 0;
  std::string text_;
};

}  // namespace karvel
