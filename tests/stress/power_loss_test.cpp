#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <map>

#include "contract/site_shop.h"

// The machine goes down at each moment of a run at which a file changes: what has not been synced
// by then is lost, down to the last byte.

namespace {

int momentsLeft = -1;                             ///< -1: there is power for ever
std::map<ino_t, std::filesystem::path> unsynced;  ///< files, where they stand now

void passMoment() {
  if (momentsLeft < 0 || momentsLeft-- > 0) return;
  for (const auto& [inode, path] : unsynced) static_cast<void>(truncate(path.c_str(), 0));
  _exit(0);
}

ino_t inodeOf(int descriptor) {
  struct stat status {};
  return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) ? status.st_ino : 0;
}

}  // namespace

// The calls that the ports make, in place of the library's.
extern "C" {

ssize_t write(int descriptor, const void* bytes, std::size_t count) {
  const ino_t inode = momentsLeft < 0 ? 0 : inodeOf(descriptor);
  if (inode != 0) {
    passMoment();
    const auto link = "/proc/self/fd/" + std::to_string(descriptor);
    unsynced[inode] = std::filesystem::read_symlink(link);
  }
  return syscall(SYS_write, descriptor, bytes, count);
}

int fsync(int descriptor) {
  passMoment();
  unsynced.erase(inodeOf(descriptor));
  return static_cast<int>(syscall(SYS_fsync, descriptor));
}

int rename(const char* from, const char* to) noexcept {
  passMoment();
  for (auto& [inode, path] : unsynced) {
    if (path == from) path = to;
  }
  return static_cast<int>(syscall(SYS_rename, from, to));
}

int unlink(const char* path) noexcept {
  passMoment();
  return static_cast<int>(syscall(SYS_unlink, path));
}
}

namespace karvel {
namespace {

constexpr int kFinished = 1;

/// Sends in a process that dies at that moment; true when it came to its end before.
bool sendUntil(int moment, SiteShop& shop) {
  const pid_t child = fork();
  if (child == 0) {
    momentsLeft = moment;
    shop.start();
    shop.send();
    _exit(kFinished);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status));
  return WEXITSTATUS(status) == kFinished;
}

TEST(PowerLoss, LeavesWholeSettingsAndTheNextRunHeals) {
  constexpr const char* kKeys[] = {"FTP CODE", "GRUP CODE", "GRUP NAME", "FTP SEVE",
                                   "FTP PASS", "FTP FOLD",  "FTP TYPE",  "HST FOLD"};
  bool finished = false;
  int moment = 0;
  for (; !finished && !HasFailure(); ++moment) {
    SCOPED_TRACE("moment " + std::to_string(moment));
    SiteShop shop;
    std::map<std::string, std::string> before;
    for (const char* key : kKeys) before[key] = shop.own(key);
    finished = sendUntil(moment, shop);
    for (const char* key : kKeys) EXPECT_EQ(shop.own(key), before[key]) << key;
    for (const auto& [name, content] : shop.delivered()) {
      EXPECT_TRUE(!content.empty() || name.ends_with("xxx")) << name;
    }
    if (shop.own("FTP CHKF") != "1") shop.setOwn("FTP CHKF", "1");
    shop.start();
    shop.send();
    EXPECT_FALSE(shop.form().SndNG);
    EXPECT_EQ(shop.delivered().size(), 2U);
    EXPECT_TRUE(shop.isTidy());
  }
  std::cout << moment - 1 << " moments of power loss\n";
  EXPECT_GT(moment, 10);
}

}  // namespace
}  // namespace karvel
