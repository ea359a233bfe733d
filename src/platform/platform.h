#pragma once

#include <memory>
#include <string>

#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "platform/instance.h"
#include "platform/internet.h"
#include "platform/profile.h"

namespace karvel {

/// The real platform: what the program starts with and every port's implementation.
struct Platform {
  std::string programFolder;  ///< folder of the executable, without a separator at its end
  std::string commandLine;    ///< the arguments, joined by blanks, without the program's name
  std::unique_ptr<Clock> clock;
  std::unique_ptr<Files> files;
  std::unique_ptr<Profile> profile;
  std::unique_ptr<Internet> internet;
  std::unique_ptr<Instance> instance;
  std::unique_ptr<Desktop> desktop;
};

/// Each platform folder has one of these.
Platform makePlatform(int argc, char** argv);

}  // namespace karvel
