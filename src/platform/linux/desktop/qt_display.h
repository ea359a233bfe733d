#pragma once

namespace karvel {

/// Whether windows can be shown: an X server or a Wayland compositor answers, or QT_QPA_PLATFORM
/// names a platform that needs neither. (Qt ends the process when it finds no display, so this is
/// asked first.) May set QT_QPA_PLATFORM to the one that answers.
bool findDisplay();

}  // namespace karvel
