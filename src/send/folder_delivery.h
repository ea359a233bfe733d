#pragma once

#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/files.h"
#include "send/delivery.h"
#include "ui/ftp_form.h"

namespace karvel {

/// Delivery into the output folder that the panel shows. A file gets its name there when its copy
/// is complete, where the folder allows a temporary name ("*.part") and a rename.
class FolderDelivery final : public Delivery {
 public:
  FolderDelivery(const FtpForm& form, Files& files, Clock& clock)
      : form_(form), files_(files), clock_(clock) {}

  bool putFile(const std::string& folder, const std::string& name) override {
    return Copy_OutFold(folder, name, false);
  }
  void removeFile(const std::string& name) override { Copy_OutFold("", name, true); }

 private:
  /// Replaces the file `name` of the output folder by that of `sourceFolder`, or only deletes it.
  /// True when the copy is there afterwards; always false with `deleteOnly`.
  bool Copy_OutFold(const std::string& sourceFolder, const std::string& name, bool deleteOnly);
  void Copy_File(std::string_view source, std::string_view folder, std::string_view name);

  const FtpForm& form_;
  Files& files_;
  Clock& clock_;
};

}  // namespace karvel
