#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/fsuid.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <functional>
#include <thread>
#include <utility>

#include "contract/scratch_folder.h"
#include "platform/linux/system/end_signals.h"
#include "platform/linux/system/ini_profile.h"
#include "platform/linux/system/posix_files.h"
#include "platform/linux/system/user_instance.h"

// What the ports of this system promise on Linux alone.

namespace {

/// Called when new content is on the disk, but not yet in its place; once unless it sets itself
/// again.
std::function<void()> beforeReplacing;
/// The disk has no room for so many files from now on.
int refusedSyncs = 0;

}  // namespace

/// In the place of the C library's.
extern "C" int fsync(int descriptor) {
  if (const auto call = std::exchange(beforeReplacing, nullptr)) call();
  if (refusedSyncs > 0) {
    --refusedSyncs;
    errno = ENOSPC;
    return -1;
  }
  return static_cast<int>(syscall(SYS_fsync, descriptor));
}

namespace karvel {
namespace {

struct OnScratchFolder : ::testing::Test {
  const ScratchFolder folder;
};
struct IniProfileTest : OnScratchFolder {};
struct PosixFilesTest : OnScratchFolder {};
struct UserInstanceTest : OnScratchFolder {};

mode_t permissionsOf(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

/// Lets no file grow beyond a size, as a full disk would, while it lives.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : oldAction_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &old_);
    const rlimit lower{bytes, old_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &lower);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &old_);
    std::signal(SIGXFSZ, oldAction_);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  rlimit old_{};
  void (*oldAction_)(int);
};

/// A super user may do everything: for a while this thread is nobody special. Others stay who they
/// are.
class AsNobody {
 public:
  AsNobody() {
    setfsgid(kNobody);
    setfsuid(kNobody);
  }
  ~AsNobody() {
    setfsuid(0);
    setfsgid(0);
  }
  AsNobody(const AsNobody&) = delete;
  AsNobody& operator=(const AsNobody&) = delete;

  static constexpr id_t kNobody = 65534;
};

TEST_F(IniProfileTest, ANewFileIsForItsOwnerAloneAndNotBehindALink) {
  const std::string path = folder.path("karvel.hnb");
  ASSERT_EQ(symlink("elsewhere", path.c_str()), 0);
  EXPECT_TRUE(IniProfile().write("S", "a", "1", path));
  EXPECT_EQ(permissionsOf(path), 0600U);
  EXPECT_FALSE(folder.has("elsewhere"));
}

TEST_F(IniProfileTest, AWriteKeepsPermissionsAndLinks) {
  const std::string path = folder.add("karvel.ini", "[S]\r\na=1\r\n");
  const std::string link = folder.path("link.ini");
  ASSERT_EQ(chmod(path.c_str(), 0664), 0);
  ASSERT_EQ(symlink("karvel.ini", link.c_str()), 0);
  EXPECT_TRUE(IniProfile().write("S", "a", "2", link));
  EXPECT_EQ(ScratchFolder::content(path), "[S]\r\na=2\r\n");
  EXPECT_EQ(permissionsOf(path), 0664U);
  struct stat status {};
  ASSERT_EQ(lstat(link.c_str(), &status), 0);
  EXPECT_TRUE(S_ISLNK(status.st_mode));
}

TEST_F(IniProfileTest, AFileThatIsSomebodyElsesStaysTheirs) {
  const std::string path = folder.add("karvel.ini", "[S]\r\na=10000\r\n");
  const uid_t owner = geteuid() == 0 ? 1 : geteuid();
  const gid_t group = geteuid() == 0 ? AsNobody::kNobody : getegid();
  ASSERT_EQ(chown(path.c_str(), owner, group), 0);
  ASSERT_EQ(chmod(path.c_str(), 0664), 0);
  for (const mode_t folderMode : {0555, 0777}) {  // one takes no new file, one does
    ASSERT_EQ(chmod(folder.path().c_str(), folderMode), 0);
    const std::string value = std::to_string(folderMode);
    {
      const AsNobody user;
      EXPECT_TRUE(IniProfile().write("S", "a", value, path));
    }
    EXPECT_EQ(ScratchFolder::content(path), "[S]\r\na=" + value + "\r\n");
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, owner);
    EXPECT_EQ(permissionsOf(path), 0664U);
    EXPECT_EQ(folder.entryCount(), 1U);
  }
}

TEST_F(IniProfileTest, AFullDiskLeavesTheOldContent) {
  const std::string before = "[S]\r\na=1\r\nb=" + std::string(10'000, 'x') + "\r\n";
  const std::string path = folder.add("karvel.ini", before);
  ASSERT_EQ(chmod(path.c_str(), 0666), 0);
  for (const mode_t folderMode : {0555, 0755}) {  // written over, replaced
    ASSERT_EQ(chmod(folder.path().c_str(), folderMode), 0);
    const FileSizeLimit limit(before.size());
    const auto user = folderMode == 0555 ? std::make_unique<AsNobody>() : nullptr;
    EXPECT_FALSE(IniProfile().write("S", "a", "longer", path));
    EXPECT_EQ(ScratchFolder::content(path), before);
    EXPECT_EQ(folder.entryCount(), 1U);
  }
}

TEST_F(IniProfileTest, ADiskWithoutRoomForACopyTakesANewValueInPlace) {
  const std::string path = folder.add("karvel.hnb", "[S]\r\nrequest=1\r\n");
  refusedSyncs = 1;
  EXPECT_TRUE(IniProfile().write("S", "request", "0", path));
  EXPECT_EQ(refusedSyncs, 0);
  EXPECT_EQ(ScratchFolder::content(path), "[S]\r\nrequest=0\r\n");
  EXPECT_EQ(folder.entryCount(), 1U);
}

TEST_F(IniProfileTest, LeavesNothingBehindWhenItCannotWrite) {
  const std::string pipe = folder.path("pipe.ini");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_FALSE(IniProfile().write("S", "a", "1", pipe));
  EXPECT_EQ(IniProfile().read("S", "a", pipe, 256), "");
  const std::string huge = folder.add("huge.ini", std::string(17U << 20U, 'x'));
  EXPECT_FALSE(IniProfile().write("S", "a", "1", huge));
  EXPECT_EQ(ScratchFolder::content(huge)->size(), 17U << 20U);
  EXPECT_EQ(folder.entryCount(), 2U);
}

TEST_F(IniProfileTest, KeepsWhatAnotherProgramWritesMeanwhile) {
  const std::string path = folder.add("karvel.hnb", "[S]\r\na=1\r\nrequest=0\r\n");
  beforeReplacing = [&] {
    EXPECT_EQ(ScratchFolder::content(path), "[S]\r\na=1\r\nrequest=0\r\n") << "half written";
    EXPECT_TRUE(IniProfile().write("S", "request", "1", path));
  };
  EXPECT_TRUE(IniProfile().write("S", "a", "2", path));
  EXPECT_EQ(ScratchFolder::content(path), "[S]\r\na=2\r\nrequest=1\r\n");

  const std::function<void()> busy = [&] {
    folder.add("karvel.hnb", *ScratchFolder::content(path) + ";");
    beforeReplacing = busy;
  };
  beforeReplacing = busy;
  EXPECT_TRUE(IniProfile().write("S", "a", "3", path)) << "in place at last";
  beforeReplacing = nullptr;
  EXPECT_GT(std::ranges::count(*ScratchFolder::content(path), ';'), 10);
  EXPECT_EQ(IniProfile().read("S", "a", path, 256), "3");
  EXPECT_EQ(folder.entryCount(), 1U);
}

TEST_F(IniProfileTest, WaitsForAnotherProgramThatIsWriting) {
  for (const bool forGood : {false, true}) {
    const std::string path = folder.add("karvel.hnb", "[S]\r\na=1\r\nb=1\r\n");
    FileDescriptor other(open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
    std::thread writer([&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
      while (forGood && ScratchFolder::content(path)->empty()) std::this_thread::yield();
      EXPECT_TRUE(other.writeAll("[S]\r\na=1\r\nb=2\r\n"));
      other.close();
    });
    EXPECT_TRUE(IniProfile().write("S", "a", "3", path));
    writer.join();
    // Nobody can tell when it will end: what it writes then counts.
    EXPECT_EQ(IniProfile().read("S", "a", path, 256), forGood ? "1" : "3");
    EXPECT_EQ(IniProfile().read("S", "b", path, 256), "2");
  }
}

TEST_F(IniProfileTest, DeletesWhatAKilledProgramHasLeftAndNothingElse) {
  const std::string path = folder.add("karvel.hnb", "[S]\r\na=1\r\n");
  for (const auto* name : {"karvel.hnb.unsaved-aB3xY9", "karvel.hnb.backup",
                           "karvel.hnb.unsaved-old", "karvel.ini.unsaved-aB3xY9"}) {
    folder.add(name, "password");
  }
  IniProfile().removeLeftovers(path);
  EXPECT_FALSE(folder.has("karvel.hnb.unsaved-aB3xY9"));
  EXPECT_EQ(folder.entryCount(), 4U);
}

TEST_F(PosixFilesTest, RefusesAPipeInsteadOfWaitingForIt) {
  const std::string pipe = folder.path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  PosixFiles files;
  EXPECT_FALSE(files.readPieces(pipe, [](std::string_view) {}));
  EXPECT_FALSE(files.write(pipe, "x"));
  EXPECT_FALSE(files.append(pipe, "x"));
  EXPECT_FALSE(files.copy(pipe, folder.path("copy")));
  EXPECT_FALSE(files.copy(folder.add("file", "x"), pipe));
}

TEST_F(PosixFilesTest, ACopyThatDoesNotFitLeavesNoHalfFile) {
  const std::string source = folder.add("source", std::string(600'000, 'x'));
  const FileSizeLimit limit(300'000);
  EXPECT_FALSE(PosixFiles().copy(source, folder.path("target")));
  EXPECT_FALSE(folder.has("target"));
  EXPECT_FALSE(PosixFiles().write(folder.path("written"), std::string(600'000, 'x')));
}

TEST_F(PosixFilesTest, ACopyOntoItselfUnderAnotherNameKeepsTheContent) {
  const std::string file = folder.add("file", "content");
  const std::string hardLink = folder.path("hard link");
  ASSERT_EQ(::link(file.c_str(), hardLink.c_str()), 0);
  EXPECT_FALSE(PosixFiles().copy(file, hardLink));
  EXPECT_EQ(ScratchFolder::content(file), "content");
}

TEST_F(PosixFilesTest, WritesNothingThroughALink) {
  PosixFiles files;
  for (const std::string name : {"dangling", "planted"}) {
    const std::string victim = folder.path("victim of " + name);
    if (name == "planted") folder.add("victim of planted", "old");
    const std::string link = folder.path(name);
    ASSERT_EQ(symlink(victim.c_str(), link.c_str()), 0);
    EXPECT_FALSE(files.append(link, "new"));
    EXPECT_TRUE(files.copy(folder.add("source", "copied"), link));
    EXPECT_EQ(ScratchFolder::content(link), "copied");
    ASSERT_TRUE(files.remove(link));
    ASSERT_EQ(symlink(victim.c_str(), link.c_str()), 0);
    EXPECT_TRUE(files.write(link, "written"));
    EXPECT_EQ(ScratchFolder::content(link), "written");
  }
  EXPECT_FALSE(folder.has("victim of dangling"));
  EXPECT_EQ(ScratchFolder::content(folder.path("victim of planted")), "old");
}

TEST_F(UserInstanceTest, ALockOfSomebodyElsesOnTheFolderIsNone) {
  const FileDescriptor reader(open(folder.path().c_str(), O_RDONLY | O_DIRECTORY));
  ASSERT_EQ(flock(reader.get(), LOCK_EX | LOCK_NB), 0);
  EXPECT_TRUE(UserInstance().acquire(folder.path()));
}

TEST(EndSignals, AreTheOnesThatAskForTheEnd) {
  sigset_t before;
  sigprocmask(SIG_SETMASK, nullptr, &before);
  const auto handler = std::signal(SIGHUP, SIG_IGN);
  EndSignals signals;
  for (const int number : {SIGHUP, SIGPIPE, SIGXFSZ}) std::raise(number);
  EXPECT_FALSE(signals.take());
  std::raise(SIGTERM);
  EXPECT_TRUE(signals.take());
  std::signal(SIGHUP, handler);
  sigprocmask(SIG_SETMASK, &before, nullptr);
}

}  // namespace
}  // namespace karvel
