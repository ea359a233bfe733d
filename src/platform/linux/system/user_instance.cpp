#include "platform/linux/system/user_instance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <utility>

#include "text/path.h"

namespace karvel {
namespace {

constexpr int kAttempts = 10;

/// The same for every path to the folder.
std::string lockName(const std::string& programFolder) {
  struct stat status {};
  if (stat(programFolder.c_str(), &status) != 0) return {};
  return "karvel-" + std::to_string(geteuid()) + "-" + std::to_string(status.st_dev) + "-" +
         std::to_string(status.st_ino);
}

/// Invalid when the folder is not this user's alone: another user may have put one there.
FileDescriptor openOwnFolder(const std::string& path) {
  FileDescriptor folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  struct stat status {};
  const bool own = folder.valid() && fstat(folder.get(), &status) == 0 &&
                   status.st_uid == geteuid() && (status.st_mode & 0777U) == S_IRWXU;
  return own ? std::move(folder) : FileDescriptor();
}

/// False when the path no longer leads to the open folder: its last holder has deleted it.
bool isStillAt(const std::string& path, int folder) {
  struct stat there {};
  struct stat open {};
  return lstat(path.c_str(), &there) == 0 && fstat(folder, &open) == 0 &&
         there.st_dev == open.st_dev && there.st_ino == open.st_ino;
}

enum class Attempt : std::uint8_t { kLocked, kHeld, kImpossible };

Attempt lockFolder(const std::string& path, FileDescriptor& folder) {
  for (int i = 0; i < kAttempts; ++i) {
    mkdir(path.c_str(), S_IRWXU);
    folder = openOwnFolder(path);
    if (!folder.valid()) return Attempt::kImpossible;
    if (flock(folder.get(), LOCK_EX | LOCK_NB) != 0) {
      return errno == EWOULDBLOCK ? Attempt::kHeld : Attempt::kImpossible;
    }
    if (isStillAt(path, folder.get())) return Attempt::kLocked;
  }
  return Attempt::kHeld;
}

std::array<std::string, 2> lockPaths(const std::string& programFolder) {
  const std::string name = lockName(programFolder);
  return {joinPath("/run/user/" + std::to_string(geteuid()), name), joinPath("/tmp", name)};
}

}  // namespace

bool UserInstance::acquire(const std::string& programFolder) {
  for (const std::string& path : lockPaths(programFolder)) {
    Lock lock{path, FileDescriptor()};
    const Attempt attempt = lockFolder(lock.path, lock.folder);
    if (attempt == Attempt::kHeld) return false;
    if (attempt == Attempt::kLocked) locks_.push_back(std::move(lock));
  }
  if (locks_.empty()) {
    std::fputs("karvel: 二重起動を防ぐロックを作れないため、ロックなしで起動します。\n", stderr);
  }
  return true;
}

bool UserInstance::held(const std::string& programFolder) {
  const auto paths = lockPaths(programFolder);
  return std::any_of(paths.begin(), paths.end(), [](const std::string& path) {
    const FileDescriptor folder = openOwnFolder(path);
    return folder.valid() && flock(folder.get(), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  });
}

UserInstance::~UserInstance() {
  for (const Lock& lock : locks_) rmdir(lock.path.c_str());
}

}  // namespace karvel
