#include "platform/linux/internet/ftp_reply.h"

namespace karvel {
namespace {

/// The code that a line begins with, 100 to 599; otherwise 0.
int leadingCode(std::string_view line) {
  if (line.size() < 3 || line[0] < '1' || line[0] > '5') return 0;
  int code = 0;
  for (const char c : line.substr(0, 3)) {
    if (c < '0' || c > '9') return 0;
    code = code * 10 + (c - '0');
  }
  return code;
}

/// "226 Done." or "226" alone; a "-" behind the code announces further lines.
bool isLastLine(std::string_view line) {
  return line.size() == 3 || line[3] == ' ';
}

}  // namespace

bool FtpReply::addLine(std::string_view line) {
  if (!text_.empty()) text_.append("\r\n");
  text_.append(line);

  const int code = leadingCode(line);
  if (code_ == 0) code_ = code;
  complete_ = code != 0 && code == code_ && isLastLine(line);
  return code_ != 0 && text_.size() <= kLongest;
}

}  // namespace karvel
