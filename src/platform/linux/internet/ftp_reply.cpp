#include "platform/linux/internet/ftp_reply.h"

namespace karvel {
namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

/// The code of a line that ends a reply: three digits and a blank. Otherwise 0.
int finalCode(std::string_view line) {
  if (line.size() < 4 || line[3] != ' ') return 0;
  if (!isDigit(line[0]) || !isDigit(line[1]) || !isDigit(line[2])) return 0;
  return (line[0] - '0') * 100 + (line[1] - '0') * 10 + (line[2] - '0');
}

std::string_view withoutLineEnd(std::string_view line) {
  const auto last = line.find_last_not_of("\r\n");
  return line.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

/// Cuts the text; no half UTF-8 character may stay, or the text would not be known for UTF-8.
void cutText(std::string& text, std::size_t limit) {
  constexpr int kMostContinuations = 3;
  if (text.size() <= limit) return;
  text.resize(limit);
  for (int i = 0; i < kMostContinuations; ++i) {
    if ((static_cast<unsigned char>(text.back()) & 0xC0U) == 0x80) text.pop_back();
  }
  if ((static_cast<unsigned char>(text.back()) & 0x80U) != 0) text.pop_back();
}

}  // namespace

void FtpReply::addLine(std::string_view line) {
  if (complete()) clear();
  size_ += line.size();
  code_ = finalCode(line);
  if (!text_.empty()) text_.append("\r\n");
  text_.append(withoutLineEnd(line));
  cutText(text_, kTextLimit);
}

}  // namespace karvel
