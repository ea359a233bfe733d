#pragma once

#include <memory>

#include "platform/linux/desktop/qt_control_widget.h"

namespace karvel {

/// Makes the widget that shows a control, as a child of the form's window. `link` outlives it.
std::unique_ptr<QtControlWidget> makeQtControlWidget(Control& control, const QtFormLink& link,
                                                     QWidget& parent);

}  // namespace karvel
