#pragma once

#include "check/finding.h"
#include "check/shop.h"

namespace karvel {

/// Whether a start would stay resident, and whether the program runs and can work.
void findStart(Shop& shop, Findings& findings);

}  // namespace karvel
