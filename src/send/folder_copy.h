#pragma once

#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/files.h"
#include "ui/ftp_form.h"

namespace karvel {

/// Delivery into the output folder that the panel shows.
class FolderCopy {
 public:
  FolderCopy(const FtpForm& form, Files& files, Clock& clock)
      : form_(form), files_(files), clock_(clock) {}

  /// Replaces the file `name` of the output folder by that of `sourceFolder` (which ends in the
  /// separator), or only deletes it. True when the copy is there afterwards; always false with
  /// `deleteOnly`.
  bool Copy_OutFold(const std::string& sourceFolder, const std::string& name, bool deleteOnly);

 private:
  void Copy_File(std::string_view source, std::string_view folder, std::string_view name);

  const FtpForm& form_;
  Files& files_;
  Clock& clock_;
};

}  // namespace karvel
