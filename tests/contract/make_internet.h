#pragma once

#include <memory>

#include "platform/internet.h"

namespace karvel {

/// The platform's own implementation of the port; each platform's folder has one of these.
std::unique_ptr<Internet> makeInternet();

}  // namespace karvel
