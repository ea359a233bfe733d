#include "platform/linux/system/ini_profile.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>
#include <thread>
#include <utility>

#include "platform/linux/system/file_descriptor.h"
#include "text/ini_text.h"

namespace karvel {
namespace {

constexpr off_t kLargestFile = 16 * 1024 * 1024;  ///< bytes; a larger one is no settings file
constexpr int kAttempts = 20;
constexpr std::chrono::milliseconds kPause{10};  ///< between them

/// A new content until it takes its place: a name that is nobody else's, so that what a killed
/// program has left can be told from a copy that the user keeps.
constexpr std::string_view kUnsaved = ".unsaved-";
constexpr std::string_view kPlaceholder = "XXXXXX";  // of mkostemp

/// A file as it was at one moment.
struct Snapshot {
  struct stat status {};
  std::string content;

  [[nodiscard]] bool sameAs(const Snapshot& other) const {
    return status.st_dev == other.status.st_dev && status.st_ino == other.status.st_ino &&
           content == other.content;
  }
};

std::optional<std::string> readAll(int descriptor, off_t size) {
  std::string content(static_cast<std::size_t>(size) + 1, '\0');
  std::size_t length = 0;
  while (length < content.size()) {
    const ssize_t count = ::read(descriptor, content.data() + length, content.size() - length);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    length += static_cast<std::size_t>(count);
  }
  content.resize(length);
  return content;
}

/// Empty when there is no settings file of that path or it cannot be read.
std::optional<Snapshot> readFile(const std::string& path) {
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  Snapshot snapshot;
  if (!file.valid() || fstat(file.get(), &snapshot.status) != 0) return std::nullopt;
  if (!S_ISREG(snapshot.status.st_mode) || snapshot.status.st_size > kLargestFile) {
    return std::nullopt;
  }
  auto content = readAll(file.get(), snapshot.status.st_size);
  if (!content) return std::nullopt;
  snapshot.content = std::move(*content);
  return snapshot;
}

/// The file that a symbolic link leads to, so that the link survives; otherwise the path itself.
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

/// Gives the new file the owner, group and permissions of the one that it will replace.
bool inheritFrom(const struct stat& old, int descriptor) {
  struct stat own {};
  if (fstat(descriptor, &own) != 0) return false;
  const bool same = own.st_uid == old.st_uid && own.st_gid == old.st_gid;
  if (!same && fchown(descriptor, old.st_uid, old.st_gid) != 0) return false;
  return fchmod(descriptor, old.st_mode & 07777U) == 0;
}

/// False when the file is not, or no longer, the one that `old` was taken of.
bool unchanged(const std::string& path, const std::optional<Snapshot>& old) {
  const auto now = readFile(path);
  return now.has_value() == old.has_value() && (!now || now->sameAs(*old));
}

/// True when a process has the file open for writing: what it writes later would go to a file that
/// has been replaced. False also where the file system does not tell.
bool isBeingWritten(const std::string& path) {
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  // A lease for reading is granted while nobody writes. Who begins to in that moment waits for its
  // end, and this process would get a signal, which is to be one that does nothing by itself.
  fcntl(file.get(), F_SETSIG, SIGURG);
  if (fcntl(file.get(), F_SETLEASE, F_RDLCK) != 0) return errno == EAGAIN;
  fcntl(file.get(), F_SETLEASE, F_UNLCK);
  return false;
}

enum class Outcome : std::uint8_t {
  kStored,
  kFailed,
  kOvertaken,  ///< another program writes, or has written meanwhile; nothing has been changed
};

/// Replaces the file in one step: a reader, or a power cut, finds the old content or the new one.
Outcome replaceFile(const std::string& path, const std::optional<Snapshot>& old,
                    FileDescriptor file, const std::string& temporary, std::string_view content) {
  if (!file.writeAll(content) || fsync(file.get()) != 0) return Outcome::kFailed;
  // As late as can be: what is written after this look is lost.
  if (!unchanged(path, old) || isBeingWritten(path)) return Outcome::kOvertaken;
  // Gone when another process has taken it for a leftover before it was locked.
  if (rename(temporary.c_str(), path.c_str()) != 0) {
    return errno == ENOENT ? Outcome::kOvertaken : Outcome::kFailed;
  }
  syncFolder(path.substr(0, path.find_last_of('/')));
  return Outcome::kStored;
}

/// Overwrites the old content in its place, if the disk has room for all of the new one.
Outcome rewriteFile(const std::string& path, const Snapshot& old, std::string_view content) {
  const auto size = static_cast<off_t>(content.size());
  FileDescriptor file(open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW));
  if (!file.valid()) return Outcome::kFailed;
  if (!unchanged(path, old)) return Outcome::kOvertaken;
  if (posix_fallocate(file.get(), 0, size) != 0) return Outcome::kFailed;
  const bool stored = file.writeAll(content) && ftruncate(file.get(), size) == 0 &&
                      fsync(file.get()) == 0 && file.close();
  return stored ? Outcome::kStored : Outcome::kFailed;
}

/// Makes the new content in a file of its own, which then takes the place of the old one.
Outcome storeFile(const std::string& path, const std::optional<Snapshot>& old,
                  std::string_view content) {
  std::string temporary = path;
  temporary.append(kUnsaved).append(kPlaceholder);
  FileDescriptor file(mkostemp(temporary.data(), O_CLOEXEC));
  if (!file.valid()) return Outcome::kFailed;
  // Shows that its writer is alive. Without locks on this file system nothing is ever swept.
  flock(file.get(), LOCK_EX | LOCK_NB);
  const bool alike = !old || inheritFrom(old->status, file.get());
  const Outcome outcome =
      alike ? replaceFile(path, old, std::move(file), temporary, content) : Outcome::kFailed;
  if (outcome != Outcome::kStored) unlink(temporary.c_str());
  return outcome;
}

Outcome setValue(const std::string& path, const std::string& section, const std::string& key,
                 const std::string& value, bool inPlace) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) {
    return storeFile(path, std::nullopt, iniWithValue({}, section, key, value));
  }
  const bool writable = S_ISREG(status.st_mode) && (status.st_mode & S_IWUSR) != 0;
  const auto old = writable ? readFile(path) : std::nullopt;
  if (!old) return Outcome::kFailed;
  const std::string content = iniWithValue(old->content, section, key, value);
  if (content == old->content) return Outcome::kStored;
  const Outcome outcome = inPlace ? Outcome::kFailed : storeFile(path, old, content);
  // The folder takes no such file, or the disk no second copy.
  return outcome == Outcome::kFailed ? rewriteFile(path, *old, content) : outcome;
}

bool isUnsavedOf(std::string_view file, std::string_view name) {
  if (!name.starts_with(file)) return false;
  name.remove_prefix(file.size());
  if (!name.starts_with(kUnsaved)) return false;
  name.remove_prefix(kUnsaved.size());
  return name.size() == kPlaceholder.size() &&
         std::ranges::all_of(name, [](unsigned char c) { return std::isalnum(c) != 0; });
}

/// Deletes a file of this user's whose writer is no longer alive.
void deleteLeftover(const std::string& path) {
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
  struct stat status {};
  const bool own = file.valid() && fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode) &&
                   status.st_uid == geteuid();
  if (own && flock(file.get(), LOCK_EX | LOCK_NB) == 0) unlink(path.c_str());
}

}  // namespace

std::string IniProfile::read(const std::string& section, const std::string& key,
                             const std::string& file, std::size_t bufferSize) {
  const auto snapshot = readFile(file);
  if (!snapshot || bufferSize == 0) return {};
  return iniValue(snapshot->content, section, key).substr(0, bufferSize - 1);
}

bool IniProfile::write(const std::string& section, const std::string& key, const std::string& value,
                       const std::string& file) {
  const std::string path = linkTarget(file);
  for (int i = 1; i <= kAttempts; ++i) {
    const Outcome outcome = setValue(path, section, key, value, i == kAttempts);
    if (outcome != Outcome::kOvertaken) return outcome == Outcome::kStored;
    std::this_thread::sleep_for(kPause);
  }
  return false;
}

void IniProfile::removeLeftovers(const std::string& file) {
  const std::string path = linkTarget(file);
  const auto separator = path.find_last_of('/');
  const std::string folder = path.substr(0, separator + 1);
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(folder.c_str()), closedir);
  if (!entries) return;
  while (const dirent* entry = readdir(entries.get())) {
    if (isUnsavedOf(path.substr(separator + 1), entry->d_name)) {
      deleteLeftover(folder + entry->d_name);
    }
  }
}

}  // namespace karvel
