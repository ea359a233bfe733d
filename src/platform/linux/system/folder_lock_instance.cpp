#include "platform/linux/system/folder_lock_instance.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

namespace karvel {

bool FolderLockInstance::acquire(const std::string& programFolder) {
  folder_ = FileDescriptor(open(programFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  const bool locked = folder_.valid() && flock(folder_.get(), LOCK_EX | LOCK_NB) == 0;
  // A file system without locks must not keep the program from starting.
  return locked || errno != EWOULDBLOCK;
}

}  // namespace karvel
