#pragma once

#include "check/finding.h"
#include "check/shop.h"

namespace karvel {

/// The ticket application: its settings, its business day, and its reception files, as the table
/// shows them that would be sent now.
void findTicketApplication(Shop& shop, Findings& findings);

}  // namespace karvel
