#include "ftp/remote_listing.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "text/numeric_value.h"
#include "text/strings.h"

namespace karvel {
namespace {

std::string folderLine(const FTPFile& entry) {
  return "D " + entry.FileName + "\t \t" + formatDateMinute(entry.FileDate);
}

/// A whole number, not negative, with a comma between groups of three digits.
std::string grouped(double number) {
  std::string digits = decimalText(number);
  for (auto place = static_cast<std::ptrdiff_t>(digits.size()) - 3; place > 0; place -= 3) {
    digits.insert(static_cast<std::size_t>(place), ",");
  }
  return digits;
}

std::string fileLine(const FTPFile& entry) {
  return "F " + entry.FileName + "\t" + grouped(entry.FileSize) + "\t" +
         formatDateMinute(entry.FileDate);
}

std::int32_t slotSize(double size) {
  constexpr double kLargest = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::min(std::round(size), kLargest));
}

}  // namespace

void RemoteListing::Ftp_ListFiles() {
  DirLines_.clear();
  FileLines_.clear();
  FileSizes_.clear();
  form_.lstFiles.setItems({});

  std::vector<std::string> shown{clsFtp_.CurDir() == "/" ? ". " : ".."};
  for (clsFtp_.FindFile("*.*"); !clsFtp_.RemoteFile->SearchEnd; clsFtp_.NextFile()) {
    store(*clsFtp_.RemoteFile, shown);
  }
  form_.lstFiles.setItems(std::move(shown));
}

void RemoteListing::store(const FTPFile& entry, std::vector<std::string>& shown) {
  const bool isFolder = entry.FileType == FTPFile::kFolder;
  std::vector<std::size_t>& slots = isFolder ? DirLines_ : FileLines_;
  if (slots.size() < kSlots) {
    slots.push_back(shown.size());
    if (!isFolder) FileSizes_.push_back(slotSize(entry.FileSize));
  }
  shown.push_back(isFolder ? folderLine(entry) : fileLine(entry));
}

std::optional<std::size_t> RemoteListing::findFolder(std::string_view part) const {
  return find(DirLines_, part);
}

std::optional<std::size_t> RemoteListing::findFile(std::string_view part) const {
  return find(FileLines_, part);
}

std::optional<std::size_t> RemoteListing::find(const std::vector<std::size_t>& slots,
                                               std::string_view part) const {
  const std::vector<std::string>& shown = form_.lstFiles.items();
  for (std::size_t slot = 0; slot < slots.size(); ++slot) {
    const std::string_view line = firstCharacters(shown[slots[slot]], kSlotWidth);
    if (contains(trimmed(line), part)) return slot;
  }
  return std::nullopt;
}

}  // namespace karvel
