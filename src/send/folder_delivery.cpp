#include "send/folder_delivery.h"

#include "text/code_page.h"
#include "text/path.h"
#include "text/strings.h"

namespace karvel {
namespace {

constexpr std::chrono::milliseconds kSettlingPause{200};
constexpr int kDroppedSeparators = 2;

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
  std::string target(trimmed(folder));
  if (!name.empty() && name.front() != kSeparator) target += kSeparator;
  target += trimmed(name);
  // The caller looks for the copy itself.
  static_cast<void>(files_.copy(std::string(trimmed(source)), target));
}

}  // namespace karvel
