#pragma once

#include <string>

#include "check/report.h"
#include "platform/inspection.h"
#include "platform/platform.h"

namespace karvel {

/// Checks the shop in `platform.programFolder`: rehearses a start with the program's own code on
/// ports that change nothing, then looks at what it has found. Only with `probe` anything is sent.
/// Beside that a file is put into the output folder, where that is the destination, and removed.
[[nodiscard]] Report checkShop(Platform& platform, Inspection& inspection, bool probe);

}  // namespace karvel
