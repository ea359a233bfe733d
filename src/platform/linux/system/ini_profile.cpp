#include "platform/linux/system/ini_profile.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/linux/system/file_descriptor.h"
#include "platform/linux/system/ini_text.h"
#include "platform/linux/system/posix_files.h"

namespace karvel {
namespace {

constexpr off_t kLargestFile = 16 * 1024 * 1024;  ///< bytes; a larger one is no settings file

std::optional<std::string> readFile(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0 || status.st_size > kLargestFile) return std::nullopt;
  std::string content;
  const auto take = [&content](std::string_view piece) { content.append(piece); };
  if (!PosixFiles().readPieces(path, take)) return std::nullopt;
  return content;
}

/// The file itself where the path is a symbolic link to it, so that the link survives.
std::string linkTarget(const std::string& path) {
  char* resolved = realpath(path.c_str(), nullptr);
  if (resolved == nullptr) return path;
  std::string target(resolved);
  std::free(resolved);
  return target;
}

void syncFolder(const std::string& folder) {
  const FileDescriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (descriptor.valid()) fsync(descriptor.get());
}

/// Gives the new file owner, group and permissions of the one that it is to replace.
bool inheritFrom(const struct stat& old, int descriptor) {
  struct stat own {};
  if (fstat(descriptor, &own) != 0) return false;
  const bool same = own.st_uid == old.st_uid && own.st_gid == old.st_gid;
  if (!same && fchown(descriptor, old.st_uid, old.st_gid) != 0) return false;
  return fchmod(descriptor, old.st_mode & 07777U) == 0;
}

/// Puts `file`, of the name `temporary`, in the place of `path` in one step: a reader, or a power
/// cut, sees the old content or the new one.
bool replaceFile(const std::string& path, FileDescriptor file, const std::string& temporary,
                 std::string_view content) {
  const bool stored = file.writeAll(content) && fsync(file.get()) == 0 && file.close() &&
                      rename(temporary.c_str(), path.c_str()) == 0;
  if (!stored) unlink(temporary.c_str());
  if (stored) syncFolder(path.substr(0, path.find_last_of('/')));
  return stored;
}

/// Writes over the old content, once there is room for all of the new one.
bool rewriteFile(const std::string& path, std::string_view content) {
  const auto size = static_cast<off_t>(content.size());
  FileDescriptor file(open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW));
  return file.valid() && posix_fallocate(file.get(), 0, size) == 0 && file.writeAll(content) &&
         ftruncate(file.get(), size) == 0 && fsync(file.get()) == 0 && file.close();
}

/// `old` is the file there, or nullptr.
bool storeFile(const std::string& path, std::string_view content, const struct stat* old) {
  std::string temporary = path + ".XXXXXX";
  FileDescriptor file(mkostemp(temporary.data(), O_CLOEXEC));
  if (!file.valid()) return old != nullptr && errno == EACCES && rewriteFile(path, content);
  if (old != nullptr && !inheritFrom(*old, file.get())) {
    unlink(temporary.c_str());
    return rewriteFile(path, content);
  }
  return replaceFile(path, std::move(file), temporary, content);
}

}  // namespace

std::string IniProfile::read(const std::string& section, const std::string& key,
                             const std::string& file, std::size_t bufferSize) {
  const auto text = readFile(file);
  if (!text || bufferSize == 0) return {};
  return iniValue(*text, section, key).substr(0, bufferSize - 1);
}

bool IniProfile::write(const std::string& section, const std::string& key, const std::string& value,
                       const std::string& file) {
  const std::string path = linkTarget(file);
  struct stat old {};
  const bool exists = stat(path.c_str(), &old) == 0;
  if (!exists) return storeFile(path, iniWithValue({}, section, key, value), nullptr);

  const bool writable = S_ISREG(old.st_mode) && (old.st_mode & S_IWUSR) != 0;
  if (!writable) return false;
  const auto text = readFile(path);
  return text && storeFile(path, iniWithValue(*text, section, key, value), &old);
}

}  // namespace karvel
