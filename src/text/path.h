#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace karvel {

/// The separator of path rules: "\" on Windows, "/" on Linux. Paths are UTF-8, where neither is
/// ever a part of another character.
inline constexpr char kSeparator = static_cast<char>(std::filesystem::path::preferred_separator);

inline std::string joinPath(std::string_view folder, std::string_view name) {
  return std::string(folder) + kSeparator + std::string(name);
}

/// True when a text used as a file's name, or as a part of one, cannot lead out of the folder: it
/// has no separator of either platform and no drive.
inline bool isPlainName(std::string_view name) {
  return name.find_first_of("/\\:") == std::string_view::npos;
}

}  // namespace karvel
