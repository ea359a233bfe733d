#pragma once

#include <QIcon>

#include "platform/desktop.h"

namespace karvel {

/// The images that are built into the executable, in every size from 16 to 64 pixels.
QIcon qtTrayImage(TrayImage image);
QIcon qtWindowImage();

}  // namespace karvel
