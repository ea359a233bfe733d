#pragma once

#include <string>

namespace karvel {

/// From now on a crash leaves a minidump in `folder`, if it is there, before Windows handles it as
/// ever. At most three of them are kept. The library that writes it is loaded only then.
void writeDumpOnCrash(const std::string& folder);

}  // namespace karvel
