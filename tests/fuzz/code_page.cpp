#include "text/code_page.h"

#include <string>

#include "fuzz/fuzz.h"

namespace karvel::fuzz {

/// A text that has come out of the code page goes there and back unchanged, one that has gone in
/// stays what it has become, and neither depends on what stands around it.
void tryInput(FuzzedDataProvider& input) {
  const std::string first = input.ConsumeRandomLengthString(200);
  const std::string second = "-" + input.ConsumeRemainingBytesAsString();
  const std::string text = fromCodePage932(first);
  require(fromCodePage932(toCodePage932(text)) == text);
  const std::string bytes = toCodePage932(second);
  require(toCodePage932(fromCodePage932(bytes)) == bytes);
  require(toCodePage932(text + second) == toCodePage932(text) + bytes);
}

}  // namespace karvel::fuzz
