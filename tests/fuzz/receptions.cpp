#include <string>

#include "fuzz/fuzz.h"
#include "stats/reception_tally.h"
#include "text/code_page.h"
#include "text/line_splitter.h"
#include "unit/reception_model.h"

namespace karvel::fuzz {
namespace {

std::string figuresOf(const DeskFigures& figures) {
  std::string row;
  const auto add = [&row](int figure) { row += "\t" + std::to_string(figure); };
  for (const int count : {figures.handled, figures.unhandled, figures.mail, figures.reservations}) {
    add(count);
  }
  for (const int count : figures.band) add(count);
  for (const int time : {figures.averageWait, figures.longestWait, int{figures.callInterval}}) {
    add(time);
  }
  return row;
}

}  // namespace

/// A reception file, in pieces of any size, has the figures of the model.
void tryInput(FuzzedDataProvider& input) {
  const std::size_t piece = input.ConsumeIntegralInRange<std::size_t>(1, 64);
  const std::string file = input.ConsumeRemainingBytesAsString();
  // Where half a character stands before a TAB, the model splits otherwise.
  const std::string text = fromCodePage932(file);
  if (toCodePage932(text) != file) return;
  ReceptionTally tally;
  LineSplitter lines;
  const auto take = [&tally](std::string_view line) { tally.addLine(line); };
  for (std::size_t at = 0; at < file.size(); at += piece) lines.feed(file.substr(at, piece), take);
  lines.finish(take);
  require(figuresOf(tally.figures()) == reception_model::figuresOf(text));
}

}  // namespace karvel::fuzz
