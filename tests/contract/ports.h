#pragma once

#include <memory>

#include "platform/files.h"
#include "platform/instance.h"
#include "platform/profile.h"

namespace karvel {

/// The real implementations of the ports on the platform that the tests run on.
std::unique_ptr<Files> makeFiles();
std::unique_ptr<Profile> makeProfile();
std::unique_ptr<Instance> makeInstance();

}  // namespace karvel
