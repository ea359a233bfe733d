#include <algorithm>
#include <string>

#include "fuzz/fuzz.h"
#include "platform/linux/internet/ftp_reply.h"
#include "text/line_splitter.h"
#include "text/server_text.h"
#include "text/strings.h"

namespace karvel::fuzz {

/// A reply has a code or is none; what is shown of it is one line.
void tryInput(FuzzedDataProvider& input) {
  const std::string bytes = input.ConsumeRemainingBytesAsString();
  FtpReply reply;
  bool sensible = true;
  LineSplitter lines;
  const auto take = [&](std::string_view line) {
    if (sensible && !reply.complete()) sensible = reply.addLine(line);
  };
  lines.feed(bytes, take);
  lines.finish(take);
  require(!reply.complete() || (reply.code() >= 100 && reply.code() < 600));
  require(!sensible || reply.text().size() <= FtpReply::kLongest);

  const std::string shown = inOneLine(textOfServer(reply.text()));
  const auto isControl = [](unsigned char c) { return c < 0x20 || c == 0x7F; };
  require(std::ranges::none_of(shown, isControl));
}

}  // namespace karvel::fuzz
