#pragma once

#include <string>
#include <string_view>

#include "platform/linux/file_descriptor.h"

namespace karvel {

/// A local file that a download writes. One that is not committed is deleted again.
class LocalTarget {
 public:
  /// Creates the file or empties it; with `mustBeNew` an existing one is left alone.
  LocalTarget(std::string path, bool mustBeNew);
  LocalTarget(const LocalTarget&) = delete;
  LocalTarget& operator=(const LocalTarget&) = delete;
  ~LocalTarget();

  [[nodiscard]] bool isOpen() const { return file_.valid(); }
  /// True when the file could not be created because it is there.
  [[nodiscard]] bool exists() const { return exists_; }

  [[nodiscard]] bool write(std::string_view bytes) const;
  /// The file is complete; false when it could not be stored.
  [[nodiscard]] bool commit();

 private:
  std::string path_;
  bool exists_ = false;
  bool committed_ = false;
  FileDescriptor file_;
};

}  // namespace karvel
