#pragma once

#include <string>

namespace karvel {

/// The destination of a send run. A run chooses one at its start.
class Delivery {
 public:
  virtual ~Delivery() = default;

  /// Delivers `folder` (ending in the separator) + `name` under that name, replacing an older
  /// file. True when the file is at the destination afterwards.
  virtual bool putFile(const std::string& folder, const std::string& name) = 0;

  /// Removes the file of that name from the destination, where it is there and can be removed.
  virtual void removeFile(const std::string& name) = 0;
};

}  // namespace karvel
