#include "platform/linux/internet/ftp_reply.h"

#include <charconv>

namespace karvel {
namespace {

/// The code that a line begins with, 100 to 599; otherwise 0.
int leadingCode(std::string_view line) {
  const std::string_view digits = line.substr(0, 3);
  int code = 0;
  const auto [end, error] = std::from_chars(digits.begin(), digits.end(), code);
  return end == digits.end() && code >= 100 && code < 600 ? code : 0;
}

}  // namespace

bool FtpReply::addLine(std::string_view line) {
  if (!text_.empty()) text_.append("\r\n");
  text_.append(line);

  const int code = leadingCode(line);
  if (code_ == 0) code_ = code;
  // "226 Done." or "226" alone; a "-" behind the code announces further lines.
  complete_ = code != 0 && code == code_ && (line.size() == 3 || line[3] == ' ');
  return code_ != 0 && text_.size() <= kLongest;
}

}  // namespace karvel
