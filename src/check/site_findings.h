#pragma once

#include "check/finding.h"
#include "check/shop.h"

namespace karvel {

/// The FTP site, where that is the destination: a run's way to the target folder, each step with
/// its time and the server's words; with `probe` an upload as well, as a run does it.
void findSite(Shop& shop, Findings& findings);

}  // namespace karvel
