#include "platform/linux/system/posix_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>
#include <optional>
#include <vector>

#include "platform/linux/system/file_descriptor.h"
#include "text/path.h"
#include "text/wildcard.h"

namespace karvel {
namespace {

constexpr std::size_t kPieceSize = 64 * 1024;
constexpr mode_t kNewFileMode = 0666;

bool isOrdinaryFile(int descriptor) {
  struct stat status {};
  return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

/// Opens an ordinary file for reading. Anything else is refused: a pipe would block.
FileDescriptor openForReading(const std::string& path) {
  FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file.valid() || !isOrdinaryFile(file.get())) return FileDescriptor();
  return file;
}

ssize_t readSome(int descriptor, char* buffer, std::size_t size) {
  ssize_t count = 0;
  do {
    count = ::read(descriptor, buffer, size);
  } while (count < 0 && errno == EINTR);
  return count;
}

/// Passes the rest of the file to `take` piece by piece. False when it cannot be read to its end,
/// or as soon as `take` returns false.
bool readAll(int descriptor, const std::function<bool(std::string_view)>& take) {
  // Uninitialised: zeroing it would cost more than reading a small settings file.
  const auto buffer = std::make_unique_for_overwrite<char[]>(kPieceSize);
  while (true) {
    const ssize_t count = readSome(descriptor, buffer.get(), kPieceSize);
    if (count <= 0) return count == 0;
    if (!take({buffer.get(), static_cast<std::size_t>(count)})) return false;
  }
}

/// The path's own status: of a symbolic link, not of what it leads to.
std::optional<struct stat> statusOf(const std::string& path) {
  struct stat status {};
  if (lstat(path.c_str(), &status) != 0) return std::nullopt;
  return status;
}

bool isReadOnly(const struct stat& status) {
  return !S_ISLNK(status.st_mode) && (status.st_mode & S_IWUSR) == 0;
}

/// Creates an empty file in the place of a file or link of that name, never behind a link. Invalid
/// where a read-only file or something else than a file stands.
FileDescriptor createAnew(const std::string& path) {
  const auto old = statusOf(path);
  if (old) {
    const bool replaceable = S_ISREG(old->st_mode) || S_ISLNK(old->st_mode);
    if (!replaceable || isReadOnly(*old) || unlink(path.c_str()) != 0) return FileDescriptor();
  }
  return FileDescriptor(
      open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kNewFileMode));
}

/// Opens an ordinary file to write at its end, but none behind a link. A read-only file is refused
/// here: the system would let a super user write to it.
FileDescriptor openForAppending(const std::string& path) {
  const auto old = statusOf(path);
  if (old && isReadOnly(*old)) return FileDescriptor();
  FileDescriptor file(open(path.c_str(),
                           O_WRONLY | O_CREAT | O_APPEND | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK,
                           kNewFileMode));
  if (!file.valid() || !isOrdinaryFile(file.get())) return FileDescriptor();
  return file;
}

bool storeContent(FileDescriptor file, std::string_view content) {
  const bool written = file.valid() && file.writeAll(content);
  return file.close() && written;
}

}  // namespace

bool PosixFiles::exists(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0;
}

bool PosixFiles::readPieces(const std::string& path, const Consumer& consumer) {
  const FileDescriptor file = openForReading(path);
  return file.valid() && readAll(file.get(), [&](std::string_view piece) {
           consumer(piece);
           return true;
         });
}

bool PosixFiles::write(const std::string& path, std::string_view content) {
  return storeContent(createAnew(path), content);
}

bool PosixFiles::append(const std::string& path, std::string_view content) {
  return storeContent(openForAppending(path), content);
}

bool PosixFiles::remove(const std::string& path) {
  const auto status = statusOf(path);
  return status && !isReadOnly(*status) && unlink(path.c_str()) == 0;
}

void PosixFiles::removeMatching(const std::string& folder, const std::string& pattern) {
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(folder.c_str()), closedir);
  if (!entries) return;
  std::vector<std::string> names;
  while (const dirent* entry = readdir(entries.get())) {
    if (matchesWildcard(entry->d_name, pattern)) names.emplace_back(entry->d_name);
  }
  for (const std::string& name : names) remove(joinPath(folder, name));
}

bool PosixFiles::copy(const std::string& source, const std::string& target) {
  const FileDescriptor from = openForReading(source);
  if (!from.valid()) return false;
  struct stat sourceStatus {};
  struct stat targetStatus {};
  if (fstat(from.get(), &sourceStatus) == 0 && stat(target.c_str(), &targetStatus) == 0 &&
      sourceStatus.st_ino == targetStatus.st_ino && sourceStatus.st_dev == targetStatus.st_dev) {
    return false;
  }
  FileDescriptor to = createAnew(target);
  if (!to.valid()) return false;

  const bool copied =
      readAll(from.get(), [&](std::string_view piece) { return to.writeAll(piece); });
  const bool good = to.close() && copied;
  if (!good) unlink(target.c_str());
  return good;
}

bool PosixFiles::rename(const std::string& from, const std::string& to) {
  const auto old = statusOf(to);
  return !(old && isReadOnly(*old)) && ::rename(from.c_str(), to.c_str()) == 0;
}

std::optional<std::uint32_t> PosixFiles::attributes(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return std::nullopt;
  std::uint32_t bits = kNormal;
  if ((status.st_mode & S_IWUSR) == 0) bits |= kReadOnly;
  if (S_ISDIR(status.st_mode)) bits |= kDirectory;
  return bits;
}

bool PosixFiles::setAttributes(const std::string& path, std::uint32_t attributes) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return false;
  constexpr mode_t kAllWrite = S_IWUSR | S_IWGRP | S_IWOTH;
  const mode_t mode =
      (attributes & kReadOnly) != 0 ? status.st_mode & ~kAllWrite : status.st_mode | S_IWUSR;
  return chmod(path.c_str(), mode & 07777U) == 0;
}

}  // namespace karvel
