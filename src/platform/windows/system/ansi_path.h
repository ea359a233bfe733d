#pragma once

#include <string>

namespace karvel {

/// A UTF-8 path for the byte-oriented Windows functions. Where the system's code page lacks one of
/// its characters the path goes by its short names, if the volume keeps them; otherwise it is one
/// that no file has.
std::string ansiPath(const std::string& utf8Path);

}  // namespace karvel
