#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "check/finding.h"
#include "check/shop.h"

namespace karvel {

/// The program's own folder: what lies there that should not, room, rights.
void findProgramFolder(Shop& shop, Findings& findings);

/// Puts the file `name` of `folder`, which ends with a separator, somewhere; false when it could
/// not be tried.
using Trial = std::function<bool(const std::string& folder, const std::string& name)>;

/// Makes a small file for a trial and removes it afterwards, or says that nothing was tried.
void tryWithFile(Shop& shop, std::string_view anchor, Findings& findings, const Trial& trial);

/// The output folder, where that is the destination: a file is put there as a run does it, and
/// removed again.
void findOutputFolder(Shop& shop, Findings& findings);

/// The date of the newest table of this shop among files and their dates, and what it says.
class NewestTable {
 public:
  explicit NewestTable(Shop& shop) : shop_(shop) {}
  /// Takes a file at the destination; `date` sorts as text, its day first ("yyyy/mm/dd ...").
  void add(const std::string& name, const std::string& date);
  void report(Findings& findings) const;

 private:
  Shop& shop_;
  std::string name_;
  std::string date_;
};

}  // namespace karvel
