#pragma once

#include <string_view>

#include "stats/call_times.h"
#include "stats/desk_figures.h"
#include "text/tab_fields.h"

namespace karvel {

/// Condenses the records of one desk into its figures, one line after the other.
///
/// A record is 11 fields separated by TAB, each taken without the blanks around it; other lines
/// are ignored. Used fields: 1 issue time, 2 call time, 4 handled marker, 5 mail marker, 7
/// reservation count. A handled record whose issue or call time is not a time of day counts as
/// handled and adds nothing to the waits.
class ReceptionTally {
 public:
  void addLine(std::string_view line);
  [[nodiscard]] DeskFigures figures() const;

 private:
  using Fields = TabFields<11>;

  void addHandled(const Fields& fields);
  void addWait(int issueSeconds, int callSeconds);
  void addToBand(double hour);

  DeskFigures counts_;
  CallTimes callTimes_;
  double waitSum_ = 0;   ///< seconds
  int longestWait_ = 0;  ///< seconds
};

}  // namespace karvel
