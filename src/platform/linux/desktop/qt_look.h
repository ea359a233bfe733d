#pragma once

#include <QColor>
#include <QFont>
#include <QIcon>

#include "form/layout.h"
#include "platform/desktop.h"

namespace karvel {

/// Makes the desktop's own style the application's, but for two things. A password is a row of "*"
/// from the first moment on. And disabled texts stay readable: the panel shows values that are
/// edited elsewhere, and small kana fade away in the usual pale grey.
void installQtStyle();

/// The images that are built into the executable, in every size from 16 to 64 pixels.
QIcon qtTrayImage(TrayImage image);
QIcon qtWindowImage();

DialogUnits qtDialogUnits(const QFont& font);

/// `percent` of the front colour over the colour behind.
QColor blended(const QColor& front, const QColor& behind, int percent);

/// A text colour that stands back and is still easy to read on its background.
QColor quieter(const QColor& text, const QColor& background);

}  // namespace karvel
