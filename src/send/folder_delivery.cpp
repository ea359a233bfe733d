#include "send/folder_delivery.h"

#include "text/code_page.h"
#include "text/path.h"
#include "text/strings.h"

namespace karvel {
namespace {

constexpr std::chrono::milliseconds kSettlingPause{200};
constexpr int kDroppedSeparators = 2;

/// The name of an incomplete copy: the shop's part of the final name. It is the same every day, so
/// that the next run overwrites what a killed one left.
std::string temporaryName(std::string_view name) {
  return std::string(name.substr(0, name.find_first_of("_."))) + ".part";
}

}  // namespace

bool FolderDelivery::Copy_OutFold(const std::string& sourceFolder, const std::string& name,
                                  bool deleteOnly) {
  // In the characters that the settings can store: the folder must be found after a restart, too.
  const std::string kept =
      fromCodePage932(toCodePage932(form_.text(FtpForm::Field::kOutputFolder)));
  std::string_view folder = trimmed(kept);
  if (characterCount(folder) <= 1) return false;
  for (int i = 0; i < kDroppedSeparators && folder.ends_with(kSeparator); ++i) {
    folder.remove_suffix(1);
  }

  const std::string target = joinPath(folder, name);
  if (files_.exists(target)) files_.remove(target);
  if (deleteOnly || files_.exists(target)) return false;
  Copy_File(sourceFolder + name, folder, name);
  clock_.sleep(kSettlingPause);
  return files_.exists(target);
}

void FolderDelivery::Copy_File(std::string_view source, std::string_view folder,
                               std::string_view name) {
  const std::string from(trimmed(source));
  std::string target(trimmed(folder));
  if (!name.empty() && name.front() != kSeparator) target += kSeparator;
  const std::string temporary = target + temporaryName(trimmed(name));
  target += trimmed(name);

  // Head office collects what it finds: a file gets its name when it is complete.
  if (files_.copy(from, temporary) && files_.rename(temporary, target)) return;
  files_.remove(temporary);
  // Not every folder allows that. The caller looks for the copy itself.
  static_cast<void>(files_.copy(from, target));
}

}  // namespace karvel
