#pragma once

#include <string>

namespace karvel {

/// From now on a crash leaves a minidump in `folder`, if it is there, and ends the program without
/// a dialog, which nobody may be there to answer. At most three dumps are kept. The library that
/// writes them is loaded only then.
void writeDumpOnCrash(const std::string& folder);

}  // namespace karvel
