#include "fakes/fake_files.h"

#include "text/path.h"
#include "text/strings.h"

namespace karvel {
namespace {

std::string folderOf(const std::string& path) {
  return path.substr(0, path.find_last_of(kSeparator));
}

}  // namespace

bool FakeFiles::exists(const std::string& path) {
  return files.contains(path) || folders.contains(path);
}

std::optional<std::string> FakeFiles::contentOf(const std::string& path) const {
  const auto found = files.find(path);
  return found != files.end() ? std::optional(found->second.content) : std::nullopt;
}

bool FakeFiles::readPieces(const std::string& path, const Consumer& consumer) {
  if (fails()) return false;
  const auto content = contentOf(path);
  if (content) consumer(*content);
  return content.has_value();
}

bool FakeFiles::canWrite(const std::string& path) const {
  const auto found = files.find(path);
  const bool readOnly = found != files.end() && found->second.readOnly;
  return !readOnly && !unwritable.contains(path) && !folders.contains(path) &&
         folders.contains(folderOf(path));
}

bool FakeFiles::write(const std::string& path, std::string_view content) {
  if (fails() || !canWrite(path)) return false;
  files[path].content = content;
  written.push_back(path);
  return true;
}

bool FakeFiles::append(const std::string& path, std::string_view content) {
  if (fails() || !canWrite(path)) return false;
  files[path].content += content;
  return true;
}

bool FakeFiles::remove(const std::string& path) {
  const auto found = files.find(path);
  if (fails() || found == files.end() || found->second.readOnly) return false;
  files.erase(found);
  return true;
}

void FakeFiles::removeMatching(const std::string& folder, const std::string& pattern) {
  const std::string ending = asciiLower(pattern.substr(1));  // patterns here are "*" + ending
  std::erase_if(files, [&](const auto& file) {
    return folderOf(file.first) == folder && asciiLower(file.first).ends_with(ending) &&
           !file.second.readOnly;
  });
}

bool FakeFiles::copy(const std::string& source, const std::string& target) {
  const auto content = contentOf(source);
  return content && write(target, *content);
}

bool FakeFiles::rename(const std::string& from, const std::string& to) {
  return copy(from, to) && files.erase(from) == 1;
}

std::optional<std::uint32_t> FakeFiles::attributes(const std::string& path) {
  if (folders.contains(path)) return kDirectory;
  const auto found = files.find(path);
  if (found == files.end()) return std::nullopt;
  return found->second.readOnly ? kReadOnly : kNormal;
}

bool FakeFiles::setAttributes(const std::string& path, std::uint32_t attributes) {
  const auto found = files.find(path);
  if (fails() || found == files.end()) return false;
  found->second.readOnly = (attributes & kReadOnly) != 0;
  return true;
}

}  // namespace karvel
