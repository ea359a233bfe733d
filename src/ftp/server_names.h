#pragma once

#include <map>
#include <string>
#include <string_view>

namespace karvel {

/// Names as this system has them (UTF-8) and as a server writes them, which may be another encoding
/// or another form of the same characters.
class ServerNames {
 public:
  /// A name that the server has written. It gets its name back like that.
  std::string read(std::string_view bytes);

  /// A name for the server: as it has written it, or else in UTF-8 where it has used that, and in
  /// code page 932 where it has not.
  [[nodiscard]] std::string written(const std::string& name) const;

  /// Another folder is read: its names replace those known. What the server's encoding is stays.
  void forgetNames() { written_.clear(); }

 private:
  bool utf8_ = false;
  std::map<std::string, std::string> written_;  ///< where it is not the name itself
};

}  // namespace karvel
