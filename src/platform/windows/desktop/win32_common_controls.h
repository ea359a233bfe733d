#pragma once

namespace karvel {

/// Makes the classes of the common controls known, in the version that the manifest names; to be
/// called before the first window with controls, and not earlier: at rest in the notification area
/// the program does without the library, which would take a third of its memory under Wine.
void registerCommonControls();

}  // namespace karvel
