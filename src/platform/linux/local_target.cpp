#include "platform/linux/local_target.h"

#include <fcntl.h>

#include <cerrno>
#include <utility>

namespace karvel {

LocalTarget::LocalTarget(std::string path, bool mustBeNew) : path_(std::move(path)) {
  constexpr mode_t kNewFileMode = 0666;
  const int flags = O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK | (mustBeNew ? O_EXCL : O_TRUNC);
  file_ = FileDescriptor(open(path_.c_str(), flags, kNewFileMode));
  exists_ = !file_.valid() && errno == EEXIST;
}

LocalTarget::~LocalTarget() {
  if (isOpen() && !committed_) unlink(path_.c_str());
}

bool LocalTarget::write(std::string_view bytes) const {
  while (!bytes.empty()) {
    const ssize_t count = ::write(file_.get(), bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

bool LocalTarget::commit() {
  committed_ = file_.close();
  if (!committed_) unlink(path_.c_str());
  return committed_;
}

}  // namespace karvel
